#pragma once

#include <span>
#include <string>
#include <string_view>

#include "metadata/exif_data.h"
#include "platform/locale_text.h"

namespace ml::metadata {

/// What the values of tokens are made of. All three outlive it.
struct FormatContext {
  ExifData& exif;  ///< not const for the one change that the full text makes, see GetPropertiesText
  const ExifOptions& options;
  const platform::LocaleText& locale;
};

/// For lists of tokens.
enum class TokenGroup { File, Date, Text, Camera, Exposure, Picture, Iptc };
inline constexpr std::string_view kTokenGroups[] = {"File",     "Date and Time", "Texts", "Camera and Lens",
                                                    "Exposure", "Picture",       "IPTC"};

struct FormatToken {
  std::string_view token;  ///< "@iso@"
  std::string_view label;  ///< what stands for it in a description; empty: the token itself
  TokenGroup group;
  std::string (*value)(const FormatContext& context);
  /// What a list of tokens says of it where the label is missing or stands for several.
  std::string_view meaning = {};
};

/// All of them. The order is behaviour: a value is open to the tokens behind its own.
std::span<const FormatToken> FormatTokens();

}  // namespace ml::metadata
