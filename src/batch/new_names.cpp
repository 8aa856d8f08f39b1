#include "batch/new_names.h"

#include <algorithm>
#include <unordered_set>

#include "batch/messages.h"
#include "batch/rename_sort.h"
#include "batch/rename_tokens.h"
#include "batch/unique_numbers.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

constexpr std::int64_t kNumbers = kLastNumber + 1;

std::int64_t NumberOf(std::size_t index, const RenameStyle& style) {
  return (static_cast<std::int64_t>(index) + std::max<std::int64_t>(style.firstNumber, 0)) % kNumbers;
}

/// A style may end in the extension itself, in whatever letters; nothing else is taken for one.
std::string WithOwnExtension(std::string name, const std::string& oldName) {
  const auto extension = platform::SplitPath(oldName).extension;
  if (platform::EndsWithNoCase(name, platform::AsciiLower(extension))) name.resize(name.size() - extension.size());
  return name.append(extension);
}

std::string Turned(const std::string& name, catalogue::CaseMode mode) {
  constexpr std::size_t kExtensionLetters = 3;
  const auto start = name.size() - std::min(name.size(), kExtensionLetters);
  switch (mode) {
    case catalogue::CaseMode::LowerExtension:
      return name.substr(0, start) + platform::AsciiLower(name.substr(start));
    case catalogue::CaseMode::Lower:
      return platform::AsciiLower(name);
    case catalogue::CaseMode::Upper:
      return platform::AsciiUpper(name);
    case catalogue::CaseMode::Unchanged:
      break;
  }
  return name;
}

RenameStyle WithinLimits(RenameStyle style) {
  style.digits = std::clamp<std::size_t>(style.digits, 1, kMostDigits);
  style.firstNumber = std::max<std::int64_t>(style.firstNumber, 0);
  return style;
}

void MarkConflicts(std::vector<NewName>& rows, const std::vector<std::string>& otherFiles) {
  std::unordered_set<std::string> others;
  for (const auto& name : otherFiles) others.insert(platform::nameFold(name));
  for (auto& row : rows) row.conflict = others.contains(platform::nameFold(row.newName));
}

}  // namespace

bool NewNames::HasConflict() const { return std::ranges::any_of(rows, &NewName::conflict); }

std::vector<std::string> OtherFiles(const std::string& directory, const std::vector<RenameImage>& sources) {
  std::vector<std::string> names;
  for (auto& entry : platform::ReadDirectory(directory.empty() ? "." : directory).entries) {
    names.push_back(std::move(entry.name));
  }
  const std::unordered_set<std::string> listed(names.begin(), names.end());
  std::unordered_set<std::string> exact, folded;
  for (const auto& source : sources) {
    listed.contains(source.name) ? exact.insert(source.name) : folded.insert(platform::nameFold(source.name));
  }
  std::erase_if(names, [&](const auto& name) {
    return exact.contains(name) || (!folded.empty() && folded.contains(platform::nameFold(name)));
  });
  return names;
}

std::string GetNewName(std::span<const RenameImage> images, std::size_t index, const RenameStyle& style) {
  if (index >= images.size()) throw platform::UserError(kIndexOverflow);
  const auto limited = WithinLimits(style);
  return ExpandStyle(limited, images[index], NumberOf(index, limited)).text;
}

NewNames BuildNewNames(const std::vector<RenameImage>& images, const RenameStyle& style,
                       const std::vector<std::string>& otherFiles) {
  const auto limited = WithinLimits(style);
  NewNames names{.rows = {}, .nextCounter = limited.firstNumber};
  for (const auto given : SortedOrder(images, limited.sort)) {
    const auto& image = images[given];
    const auto number = NumberOf(names.rows.size(), limited);
    auto expanded = ExpandStyle(limited, image, number);
    if (expanded.numbered) names.nextCounter = number + 1;
    names.rows.push_back({.oldName = image.name,
                          .newName = WithOwnExtension(std::move(expanded.text), image.name),
                          .given = given,
                          .isCanonRaw = image.isCanonRaw});
  }
  FillUniqueNumbers(names.rows, otherFiles, limited.digits);
  for (auto& row : names.rows) row.newName = Turned(row.newName, limited.caseMode);
  MarkConflicts(names.rows, otherFiles);
  return names;
}

std::string PreviewText(const NewNames& names) {
  std::string text;
  for (const auto& row : names.rows) text += row.oldName + " --> " + row.newName + "\r\n";
  return std::string(platform::Trim(text));
}

}  // namespace ml::batch
