#pragma once

#include <optional>
#include <stdexcept>
#include <stop_token>
#include <string>

#include "imaging/pixel_buffer.h"
#include "metadata/exif_data.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/pass_progress.h"
#include "rawconvert/raw_conversion_settings.h"
#include "rawconvert/raw_developer.h"

namespace ml::rawconvert {

/// A raw file as its developer gave it: not turned, red first, no padding.
struct DevelopedRaw {
  imaging::PixelBuffer pixels;
  /// Whether 16 bits are still to be had: a developer that gave 8 of them drops the wish.
  bool bits16 = false;
};

/// The raw data of a file are damaged or of an unknown kind; what() is the sentence, which names the file.
class UndevelopableRaw : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// How deep the developed picture and the written one are to be.
struct DepthWish {
  bool work16 = false;
  bool output16 = false;
};

/// What a development works with; it outlives the call.
struct DevelopTools {
  RawDeveloper& developer;
  PassProgress& progress;
  const std::stop_token& stop;
};

/// Develops `path`, whose shooting data are `exif`, by the settings; by the Combined method twice, with the highlights
/// of the second render. If the settings carry the white balance on, `settings.develop` has that of this picture
/// afterwards. Nothing if the developer finds no picture. Throws DevelopError, UndevelopableRaw, CameraImageError,
/// UserError where a file cannot be opened at all, Cancelled.
std::optional<DevelopedRaw> DevelopRawFile(const std::string& path, const metadata::ExifData& exif,
                                           RawConversionSettings& settings, const DepthWish& depth,
                                           const DevelopTools& tools);

/// Whether the settings' method makes two renders of such a file.
bool MakesTwoRenders(const CameraFamily& family, Method method);

}  // namespace ml::rawconvert
