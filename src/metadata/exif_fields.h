#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "metadata/exif_data.h"

namespace ml::metadata {

using ExifFieldValue = std::variant<std::string, std::int64_t, double, bool>;

/// One value field of ExifData under its name.
struct ExifFieldRow {
  std::string_view name;
  ExifFieldValue (*value)(const ExifData& data);
};

/// All of them but `path`, in the record's order: no buffers, places and lists.
std::span<const ExifFieldRow> ExifFields();

/// Whether something is known: the text is not empty, the number not zero, the flag set.
bool HasContent(const ExifFieldValue& value);

}  // namespace ml::metadata
