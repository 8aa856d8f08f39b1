#pragma once

#include <string>

#include "imagefiles/image_file_options.h"
#include "imagefiles/picture.h"
#include "imaging/pixel_buffer.h"
#include "platform/companion_set.h"

namespace ml::imagefiles {

struct Thumbnail {
  imaging::PixelBuffer pixels;  ///< 8-bit, blue-green-red, rows padded to a multiple of 4 pixels
  PictureSource source = PictureSource::Full;
};

/// The largest thumbnail that may come from an EXIF block or a ".thm" file, in pixels.
inline constexpr int kMaxEmbeddedThumbnail = 160;

/// A thumbnail of `path` that fits into `size` x `size`, aspect ratio kept, never enlarged. Safe to call from
/// several threads at once. Throws UserError with the reason, naming the file, if there is none. `companions`: those
/// of `path`, if the caller has looked for them, as CompanionFinder does with these options; null if not.
Thumbnail MakeThumbnail(const std::string& path, int size, const ImageFileOptions& options,
                        const platform::CompanionSet* companions = nullptr);

}  // namespace ml::imagefiles
