#pragma once

#include <string>

#include "metadata/iptc/iptc_batch.h"

/// The texts of this folder's windows and boxes.
namespace ml::metadata::ui {

inline constexpr auto kIptcPrevious = "< Prev";
inline constexpr auto kIptcNext = "Next >";
inline constexpr auto kIptcLoad = "&Load...";
inline constexpr auto kIptcSave = "&Save to file...";
inline constexpr auto kIptcApplyToSelected = "Apply to S&elected";
inline constexpr auto kIptcApplyToAll = "Apply to &All";
inline constexpr auto kIptcApply = "Appl&y";

inline constexpr auto kIptcInsert = "Insert";
inline constexpr auto kIptcInsertTip = "Puts values of the image into the text where the cursor is (Ctrl+T)";
inline constexpr auto kIptcNoTokens = "This field takes no values of the image";
inline constexpr auto kIptcNoField = "Go to a field to put values of the image into it";

inline constexpr auto kMergeKeywords = "Add to key&words and categories";
inline constexpr auto kOnlyReplaceEmpty = "Only &fill fields that are empty";
inline constexpr auto kLeaveExisting = "Lea&ve fields alone that are empty here";
inline constexpr auto kExifTimestamp = "Set date created &to that of each shot";

inline constexpr auto kNoImagesSelected = "No images are selected in the list";
inline constexpr auto kIptcLocked = "This text is too long to be edited here; it stays as it is";

inline std::string IptcTitle(const std::string& name, const std::string& place) {
  return "IPTC Data - " + name + " - " + place;
}
inline std::string IptcPlace(std::size_t number, std::size_t count) {
  return "Image " + std::to_string(number) + " of " + std::to_string(count);
}
inline std::string SeveralValues(std::size_t count) {
  return "The image has " + std::to_string(count) +
         " values here, of which this is the last. Editing it replaces them all.";
}
inline std::string Images(std::size_t count) {
  return count == 1 ? std::string("1 image") : std::to_string(count) + " images";
}
inline std::string ApplyChanges(const std::string& name) {
  return "Apply the changes to the IPTC data of this image?\n" + name;
}
inline std::string ReplaceByFile(const std::string& path) {
  return "Replace what was changed by the values of this file?\n" + path;
}
inline std::string WriteInto(std::size_t count) { return "Write these values into " + Images(count) + "?"; }
inline std::string WrittenText(const IptcBatchReport& report) {
  auto text = Images(static_cast<std::size_t>(report.written)) + " written";
  if (report.unchanged > 0) text += ", " + std::to_string(report.unchanged) + " left as they were";
  if (report.missed > 0) text += ", " + std::to_string(report.missed) + " not written";
  return text;
}

}  // namespace ml::metadata::ui
