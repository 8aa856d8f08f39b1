#include "platform/paths.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "platform/text.h"
#include "platform/unicode_fold.h"

namespace ml::platform {

namespace {

char AsciiLowerByte(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

PathParts SplitPath(std::string_view path) {
  const auto slash = path.rfind('/');
  const auto nameStart = slash == std::string_view::npos ? 0 : slash + 1;
  const auto name = path.substr(nameStart);
  const auto dot = std::min(name.rfind('.'), name.size());
  return {path.substr(0, nameStart), name.substr(0, dot), name.substr(dot)};
}

std::string_view FileName(std::string_view path) { return path.substr(DirectoryOf(path).size()); }

std::string_view DirectoryOf(std::string_view path) { return path.substr(0, path.rfind('/') + 1); }

std::string WithExtension(std::string_view path, std::string_view extension) {
  const auto oldExtension = SplitPath(path).extension;
  std::string result(path.substr(0, path.size() - oldExtension.size()));
  return result.append(extension);
}

std::string JoinPath(std::string_view directory, std::string_view name) {
  std::string result(directory);
  if (!result.empty() && result.back() != '/') result += '/';
  return result.append(name);
}

std::string AbsolutePath(std::string_view path) {
  if (path.empty()) return {};
  std::error_code ignored;  // without a working directory the path stays relative, and fails where it is used
  const auto absolute = std::filesystem::absolute(std::filesystem::path(std::string(path)), ignored);
  return (absolute.empty() ? std::filesystem::path(std::string(path)) : absolute).lexically_normal().string();
}

std::string normaliseDirectory(std::string_view directory) {
  auto result = AbsolutePath(directory);
  while (result.size() > 1 && result.back() == '/') result.pop_back();
  return result;
}

std::string nameFold(std::string_view name) {
  std::string folded;
  folded.reserve(name.size());
  for (std::size_t i = 0; i < name.size();) {
    const auto c = DecodeUtf8(name, i);
    if (!c.valid || c.value < 0x80) {
      folded += AsciiLowerByte(name[i]);
    } else {
      AppendUtf8(folded, FoldCodePoint(c.value));
    }
    i += c.length;
  }
  return folded;
}

bool EqualsFolded(std::string_view a, std::string_view b) { return a == b || nameFold(a) == nameFold(b); }

std::string AsciiLower(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), AsciiLowerByte);
  return result;
}

std::string AsciiUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return upper;
}

bool EqualsAsciiFolded(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, AsciiLowerByte, AsciiLowerByte);
}

int CompareNoCase(std::string_view a, std::string_view b) {
  const auto common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(AsciiLowerByte(a[i]));
    const auto y = static_cast<unsigned char>(AsciiLowerByte(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

bool EndsWithNoCase(std::string_view name, std::string_view ending) {
  return name.size() >= ending.size() && EqualsAsciiFolded(name.substr(name.size() - ending.size()), ending);
}

bool IsPortableName(std::string_view name) {
  constexpr std::size_t kLongestName = 255;
  constexpr std::string_view kForbidden{"\\/:*?\"<>|\0", 10};
  return !name.empty() && name != "." && name != ".." && name.size() <= kLongestName &&
         name.find_first_of(kForbidden) == std::string_view::npos;
}

bool SameFile(const std::string& a, const std::string& b) {
  if (a == b) return true;
  struct stat x {
  }, y{};
  if (::stat(a.c_str(), &x) == 0 && ::stat(b.c_str(), &y) == 0) return x.st_dev == y.st_dev && x.st_ino == y.st_ino;
  return EqualsFolded(a, b);
}

}  // namespace ml::platform
