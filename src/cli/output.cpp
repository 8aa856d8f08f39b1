#include "cli/output.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::cli {

namespace {

bool IsControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace

std::string TerminalText(std::string_view text) {
  const auto shown = platform::ToDisplayUtf8(text);
  std::string safe;
  for (std::size_t i = 0; i < shown.size();) {
    const auto c = platform::DecodeUtf8(shown, i);
    if (c.value == '\n') {
      safe += ' ';
    } else if (IsControl(c.value) && c.value != '\t') {
      safe += '?';
    } else {
      safe.append(shown, i, c.length);
    }
    i += c.length;
  }
  return safe;
}

std::string JsonText(std::string_view bytes) { return platform::ToDisplayUtf8(bytes); }

void PutPath(Json& object, const std::string& key, std::string_view path) {
  object[key] = JsonText(path);
  if (!platform::IsValidUtf8(path)) object[key + "Hex"] = platform::ToHex(path);
}

void PrintJson(const Json& document) {
  const auto text = document.dump(2) + "\n";
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void PrintLine(std::string_view text) {
  const auto line = TerminalText(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
}

void Complain(std::string_view text) {
  std::fflush(stdout);  // both may lead to one place
  const auto line = "marrowlantern-cli: " + TerminalText(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

bool AllPrinted() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

std::string GivenPaths::Add(const std::string& given) {
  auto absolute = platform::normaliseDirectory(given);
  given_.emplace(absolute, given);
  return absolute;
}

std::string GivenPaths::Of(const std::string& absolute) const {
  if (const auto found = given_.find(absolute); found != given_.end()) return found->second;
  const auto directory = platform::normaliseDirectory(platform::DirectoryOf(absolute));
  const auto found = given_.find(directory);
  return found == given_.end() ? absolute : platform::JoinPath(found->second, platform::FileName(absolute));
}

}  // namespace ml::cli
