#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "metadata/exif_data.h"
#include "metadata/shooting_group.h"

namespace ml::metadata {

using ExifFieldValue = std::variant<std::string, std::int64_t, double, bool>;

/// One value field of ExifData under its name.
struct ExifFieldRow {
  std::string_view name;
  ExifFieldValue (*value)(const ExifData& data);
  /// What it is called, and where, in a list for people; only of a field that no line of the full text tells.
  std::string_view label = {};
  ShootingGroup group = ShootingGroup::None;
};

/// All of them but `path`, in the record's order: no buffers, places and lists.
std::span<const ExifFieldRow> ExifFields();

/// Whether something is known: the text is not empty, the number not zero, the flag set.
bool HasContent(const ExifFieldValue& value);
/// For people: a number without needless digits, "yes" or "no". Texts as bytes.
std::string FieldText(const ExifFieldValue& value);

}  // namespace ml::metadata
