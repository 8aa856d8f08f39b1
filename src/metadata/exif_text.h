#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "metadata/exif_data.h"
#include "metadata/shooting_group.h"
#include "platform/locale_text.h"

/// Shooting data as text for people, a line a field, only fields with content. Bytes as the file had them.
namespace ml::metadata {

/// Everything. Kept: of most cameras the metering mode "Center" is spelt out in the record itself, for good.
std::string GetPropertiesText(ExifData& data, const platform::LocaleText& locale);

/// One line of it: `label`, `value`, `tail`.
struct PropertyLine {
  ShootingGroup group;
  std::string_view label;  ///< with its colon; empty where the value speaks for itself
  std::string value;       ///< not empty, may have line ends
  std::string_view tail;   ///< a unit, or the quotation mark that ends the value
};
/// The lines, with the same change of the record.
std::vector<PropertyLine> PropertyLines(ExifData& data, const platform::LocaleText& locale);

/// What stands beside a picture.
std::string GetSummaryText(const ExifData& data, const platform::LocaleText& locale);
/// A few lines.
std::string GetShortSummaryText(const ExifData& data, const platform::LocaleText& locale);

}  // namespace ml::metadata
