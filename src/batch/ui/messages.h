#pragma once

#include <cstddef>
#include <string>

/// The texts of the dialog for batch renaming; the sentences about single names stand with the engine.
namespace ml::batch::ui {

inline constexpr auto kRenameTitle = "Batch Rename";
inline constexpr auto kRenameSelected = "Rename &Selected", kRenameAll = "Rename &All";

inline constexpr auto kStyleLabel = "S&tyle:", kNameLabel = "Na&me of style:", kFormatLabel = "&Format:",
                      kDigitsLabel = "&Digits:", kFirstNumberLabel = "First n&umber:", kSortLabel = "Sort &by:",
                      kCaseLabel = "Lett&er case:", kListLabel = "&Old and new names:";
inline constexpr auto kContinueNumbering = "&Continue numbering from last time";
inline constexpr auto kInsertToken = "&Insert", kNextProblem = "Ne&xt Problem";

inline constexpr const char* kSortTexts[] = {"Image Number", "Alphabetical", "Image Time and Date", "As Displayed"};
inline constexpr const char* kCaseTexts[] = {"Unchanged", "Convert extension to lower case",
                                             "Convert filename to lower case", "Convert filename to upper case"};

inline constexpr auto kWidestRemark = "Character not allowed";
inline constexpr auto kOldNameTitle = "Old name", kNewNameTitle = "New name", kRemarkTitle = "Remark";

inline constexpr auto kOnlyCustomStyles =
    "Only custom styles can be edited; they stand at the end of the list of styles";
inline constexpr auto kInsertTip = "Puts shooting data and numbers into the format where the cursor is";
inline constexpr auto kDigitsOfStyle = "The style decides how many digits its numbers have";
inline constexpr auto kNoNumberInStyle = "The style has no number in it (%n or %u)";
inline constexpr auto kNoCounterInStyle = "The style has no running number in it (%n)";
inline constexpr auto kCounterGoesOn = "Numbering continues from last time";
inline constexpr auto kSortTip = "Who gets which number";

inline std::string Images(std::size_t count) {
  return count == 1 ? std::string("1 image") : std::to_string(count) + " images";
}
inline std::string RenamedText(std::size_t changed, std::size_t count) {
  if (changed == 0) return "No name changes";
  auto text = Images(changed) + (changed == 1 ? " gets a new name" : " get new names");
  if (changed < count) text += ", " + std::to_string(count - changed) + " stay as they are";
  return text;
}
inline std::string ProblemsText(std::size_t problems, std::size_t count, const std::string& remark,
                                const std::string& name) {
  return std::to_string(problems) + " of " + std::to_string(count) + " names cannot be taken. " + remark + ": " + name;
}

}  // namespace ml::batch::ui
