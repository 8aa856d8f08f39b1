#include "platform/ui/uri_list.h"

#include <unistd.h>

#include <array>
#include <optional>

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::platform::ui {
namespace {

std::optional<std::string> PercentDecoded(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      bytes += text[i];
      continue;
    }
    std::string decoded;
    if (text.size() - i < 3 || !FromHex(text.substr(i + 1, 2), decoded) || decoded[0] == '\0') return std::nullopt;
    bytes += decoded;
    i += 2;
  }
  return bytes;
}

bool IsThisMachine(std::string_view host) {
  if (host.empty() || EqualsAsciiFolded(host, "localhost")) return true;
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 && EqualsAsciiFolded(host, name.data());
}

/// The part after the scheme and the host, still encoded; nothing if the line names no file of this machine.
std::optional<std::string_view> EncodedPath(std::string_view line) {
  constexpr std::string_view kScheme = "file:";
  if (!EqualsAsciiFolded(line.substr(0, kScheme.size()), kScheme)) return std::nullopt;
  line.remove_prefix(kScheme.size());
  if (line.starts_with("//")) {
    line.remove_prefix(2);
    const auto slash = line.find('/');
    if (slash == std::string_view::npos || !IsThisMachine(line.substr(0, slash))) return std::nullopt;
    line.remove_prefix(slash);
  }
  if (!line.starts_with('/')) return std::nullopt;
  return line;
}

}  // namespace

std::vector<std::string> LocalPathsOfUriList(std::string_view text) {
  std::vector<std::string> paths;
  for (const auto line : SplitLines(text)) {
    if (const auto encoded = EncodedPath(line)) {
      if (auto path = PercentDecoded(*encoded)) paths.push_back(std::move(*path));
    }
  }
  return paths;
}

std::string UriListOf(std::span<const std::string> paths) {
  constexpr std::string_view kPlain = "/-._~!$&'()*+,;=:@";
  std::string text;
  for (const auto& path : paths) {
    text += "file://";
    for (const char c : path) {
      const bool alphanumeric = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
      if (alphanumeric || kPlain.find(c) != std::string_view::npos) {
        text += c;
      } else {
        text.append("%").append(ToHex({&c, 1}));
      }
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace ml::platform::ui
