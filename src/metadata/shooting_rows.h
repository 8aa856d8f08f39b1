#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "metadata/exif_data.h"
#include "metadata/shooting_group.h"
#include "platform/locale_text.h"

/// Everything known of an image as a list of names and values in groups, for windows that show it.
namespace ml::metadata {

/// UTF-8 for display, whatever bytes the file had: the only control character is "\n", which ends a line of a value.
struct ShootingRow {
  std::string name;  ///< may be empty where the value speaks for itself
  std::string value;
  bool operator==(const ShootingRow&) const = default;
};

struct ShootingRows {
  ShootingGroup group = ShootingGroup::None;
  std::vector<ShootingRow> rows;
  bool operator==(const ShootingRows&) const = default;
};

/// The groups that have something to tell, in their order. The lines of GetPropertiesText(), which may also change the
/// record as there, then every other field with content and the IPTC data, of which the first thousand.
std::vector<ShootingRows> ListShootingData(ExifData& data, const platform::LocaleText& locale);

/// "Name: value"; a value of several lines begins on a line of its own.
std::string RowText(const ShootingRow& row);
/// Each group as its heading and a line a row, with an empty line between groups; no line end behind the last.
std::string ListText(const std::vector<ShootingRows>& groups);

}  // namespace ml::metadata
