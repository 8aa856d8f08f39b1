#include "metadata/shooting_rows.h"

#include <algorithm>
#include <cctype>
#include <span>
#include <utility>
#include <variant>

#include "metadata/exif_fields.h"
#include "metadata/exif_text.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/value_text.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

using Groups = std::vector<ShootingRows>;

/// A broken block may be full of tiny items; nobody reads them, and windows lay each of them out.
constexpr std::size_t kMostIptcRows = 1000;

/// What the bytes are is decided for the whole value: a line alone may look like another encoding.
std::string Shown(std::string_view bytes) {
  const auto text = platform::ToDisplayUtf8(platform::TrimRight(bytes));
  std::string shown;
  for (const auto line : platform::SplitLines(text)) {
    if (!shown.empty()) shown += '\n';
    shown += platform::ToDisplayLine(line);
  }
  return shown;
}

void Add(Groups& groups, ShootingGroup group, std::string_view name, std::string_view value) {
  auto shown = Shown(value);
  if (group == ShootingGroup::None || shown.empty()) return;
  groups[static_cast<std::size_t>(group)].rows.push_back({Shown(name), std::move(shown)});
}

/// A line that is its own name: "Color matrix 4: Adobe RGB".
void AddLine(Groups& groups, ShootingGroup group, std::string_view line) {
  constexpr std::string_view kSeparator = ": ";
  const auto end = line.find(kSeparator);
  if (end == std::string_view::npos) return Add(groups, group, "", line);
  Add(groups, group, line.substr(0, end), line.substr(end + kSeparator.size()));
}

void AddProperty(Groups& groups, const PropertyLine& line) {
  if (line.label.empty()) return AddLine(groups, line.group, line.value);
  const bool quoted = line.tail == "\"";
  Add(groups, line.group, line.label.substr(0, line.label.find(':')),
      quoted ? line.value : line.value + std::string(line.tail));
}

/// The first line is a heading.
void AddCustomFunctions(Groups& groups, std::string_view text) {
  const auto lines = platform::SplitLines(text);
  for (std::size_t i = 1; i < lines.size(); ++i) AddLine(groups, ShootingGroup::CustomFunctions, lines[i]);
}

/// "supplementalCategories" as "Supplemental categories", "jobID" as "Job ID".
std::string WordsOf(std::string_view name) {
  const auto isUpper = [&](std::size_t i) {
    return i < name.size() && std::isupper(static_cast<unsigned char>(name[i]));
  };
  const auto cased = [](char c, int (*change)(int)) {
    return static_cast<char>(change(static_cast<unsigned char>(c)));
  };
  std::string words;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool starts = isUpper(i) && i > 0 && !isUpper(i - 1);
    if (starts) words += ' ';
    words += i == 0 ? cased(name[i], std::toupper) : starts && !isUpper(i + 1) ? cased(name[i], std::tolower) : name[i];
  }
  return words;
}

/// The only decimal number that no line of the full text tells is an f-number.
std::string ValueText(const ExifFieldValue& value) {
  const auto* number = std::get_if<double>(&value);
  return number != nullptr ? ApertureText(*number) : FieldText(value);
}

void AddIptcItem(Groups& groups, const IptcItem& item) {
  const auto* row = item.record == kApplicationRecord ? FindIptcDataset(item.dataset) : nullptr;
  Add(groups, ShootingGroup::Iptc,
      row != nullptr ? WordsOf(row->name) : std::to_string(item.record) + ":" + std::to_string(item.dataset),
      item.value);
}

void AddIptc(Groups& groups, std::span<const IptcItem> items) {
  const auto listed = std::min(items.size(), kMostIptcRows);
  for (const auto& item : items.first(listed)) AddIptcItem(groups, item);
  if (listed < items.size()) Add(groups, ShootingGroup::Iptc, "", std::to_string(items.size() - listed) + " more");
}

}  // namespace

std::vector<ShootingRows> ListShootingData(ExifData& data, const platform::LocaleText& locale) {
  Groups groups(kShootingGroups.size());
  for (std::size_t i = 0; i < groups.size(); ++i) groups[i].group = static_cast<ShootingGroup>(i);
  for (const auto& line : PropertyLines(data, locale)) AddProperty(groups, line);
  for (const auto& field : ExifFields()) {
    const auto value = field.value(data);
    if (HasContent(value)) Add(groups, field.group, field.label, ValueText(value));
  }
  AddCustomFunctions(groups, data.customFunctions);
  AddIptc(groups, data.iptc);
  std::erase_if(groups, [](const ShootingRows& group) { return group.rows.empty(); });
  return groups;
}

std::string RowText(const ShootingRow& row) {
  if (row.name.empty()) return row.value;
  return row.name + (row.value.find('\n') == std::string::npos ? ": " : ":\n") + row.value;
}

std::string ListText(const std::vector<ShootingRows>& groups) {
  std::string text;
  for (const auto& group : groups) {
    if (!text.empty()) text += "\n\n";
    text += kShootingGroups.at(static_cast<std::size_t>(group.group));
    for (const auto& row : group.rows) text.append("\n").append(RowText(row));
  }
  return text;
}

}  // namespace ml::metadata
