#include "catalogue/tag_file.h"

#include "catalogue/name_matcher.h"
#include "catalogue/order_file.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::catalogue {

namespace {

constexpr std::size_t kLongestNameLine = 259;
constexpr std::size_t kLongestPathLine = 4095;

std::string JoinLines(const std::vector<std::string>& lines, std::string_view end) {
  std::string text;
  for (const auto& line : lines) {
    if (FitsOnALine(line)) text.append(line).append(end);
  }
  return text;
}

void TagIndices(ImageList& list, const std::vector<int>& indices) {
  for (const int index : indices) list.SetTag(index, true);
}

std::vector<std::string_view> Stems(const std::vector<std::string>& paths) {
  std::vector<std::string_view> stems;
  stems.reserve(paths.size());
  for (const auto& path : paths) stems.push_back(platform::SplitPath(path).stem);
  return stems;
}

}  // namespace

std::vector<std::string> ParseTagFile(std::string_view text) {
  std::vector<std::string> names;
  for (const auto& line : platform::SplitLines(text)) {
    const auto name = platform::TrimRight(line.substr(0, kLongestNameLine));
    if (!name.empty()) names.emplace_back(name);
  }
  return names;
}

std::string BuildTagFile(const std::vector<std::string>& names) { return JoinLines(names, "\r\n"); }

void TagNames(ImageList& list, std::string_view directory, const std::vector<std::string>& names) {
  NameMatcher matcher({list.files.begin(), list.files.end()});
  for (const auto& name : names) TagIndices(list, matcher.FindAll(std::string(directory) + name));
}

std::string BuildTagList(const std::vector<std::string>& paths) { return JoinLines(paths, "\n"); }

void ApplyTagList(ImageList& list, std::string_view text, TagMatch match) {
  const bool stemOnly = match == TagMatch::StemOnly;
  NameMatcher matcher(stemOnly ? Stems(list.files)
                               : std::vector<std::string_view>(list.files.begin(), list.files.end()));
  for (const auto& line : platform::SplitLines(text)) {
    const auto path = platform::Trim(line.substr(0, kLongestPathLine));
    const auto name = platform::FileName(path);
    if (name.empty()) continue;
    TagIndices(list, stemOnly ? matcher.FindFolded(platform::SplitPath(path).stem)
                              : matcher.FindAll(list.Directory().append(name)));
  }
}

}  // namespace ml::catalogue
