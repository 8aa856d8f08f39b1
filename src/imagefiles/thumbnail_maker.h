#pragma once

#include <optional>
#include <stop_token>
#include <string>

#include "imagefiles/image_file_options.h"
#include "imaging/pixel_buffer.h"

namespace ml::imagefiles {

/// Where a thumbnail's pixels came from.
enum class ThumbnailSource { Exif, Thm, Viewing, Embedded, Full };
/// "exif", "thm", "viewing", "embedded", "full"
const char* ThumbnailSourceName(ThumbnailSource source);

struct Thumbnail {
  imaging::PixelBuffer pixels;  ///< 8-bit, blue-green-red, rows padded to a multiple of 4 pixels
  ThumbnailSource source = ThumbnailSource::Full;
};

/// The largest thumbnail that may come from an embedded one, in pixels.
inline constexpr int kMaxEmbeddedThumbnail = 160;

/// A thumbnail of `path` that fits into `size` x `size`, aspect ratio kept, never enlarged. Safe to call from
/// several threads at once. Throws UserError with the reason, naming the file, if there is none.
Thumbnail MakeThumbnail(const std::string& path, int size, const ImageFileOptions& options);

}  // namespace ml::imagefiles
