#pragma once

#include <string>

#include "metadata/exif_data.h"
#include "platform/locale_text.h"

/// Shooting data as text for people, a line a field, only fields with content. Bytes as the file had them.
namespace ml::metadata {

/// Everything. Kept: of most cameras the metering mode "Center" is spelt out in the record itself, for good.
std::string GetPropertiesText(ExifData& data, const platform::LocaleText& locale);
/// What stands beside a picture.
std::string GetSummaryText(const ExifData& data, const platform::LocaleText& locale);
/// A few lines.
std::string GetShortSummaryText(const ExifData& data, const platform::LocaleText& locale);

}  // namespace ml::metadata
