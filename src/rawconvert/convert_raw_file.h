#pragma once

#include <optional>
#include <stop_token>
#include <string>

#include "imaging/pixel_buffer.h"
#include "imaging/writers/metadata_blocks.h"
#include "platform/progress.h"
#include "rawconvert/conversion_options.h"
#include "rawconvert/raw_conversion_settings.h"
#include "rawconvert/raw_developer.h"

namespace ml::rawconvert {

/// What a conversion works with. Owns nothing.
struct ConversionTools {
  RawDeveloper& developer;
  platform::Progress& progress;
  std::stop_token stop{};
};

/// A converted picture that is yet to be written.
struct ConvertedPicture {
  imaging::PixelBuffer pixels;
  imaging::MetadataBlocks blocks;
  imaging::WrittenFormat format{};
  int quality = 0;
  int resolution = 0;  ///< dots an inch
};

/// Develops the raw file `source` and does to it what the settings ask for, all but the writing. If the settings carry
/// the white balance on, `settings.develop` has it afterwards. Kept: nothing, in silence, if the developer finds no
/// picture. Throws what DevelopRawFile throws.
std::optional<ConvertedPicture> ConvertPicture(const std::string& source, RawConversionSettings& settings,
                                               const ConversionOptions& options, const ConversionTools& tools);

/// Writes it as `destination`. Throws UserError, Cancelled; there is no new file then, and an old one is as it was.
void WriteConverted(const ConvertedPicture& picture, const std::string& destination, const std::stop_token& stop);

}  // namespace ml::rawconvert
