#pragma once

#include <optional>
#include <string>

#include "imagefiles/format_table.h"
#include "imagefiles/image_file_options.h"
#include "imagefiles/picture.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "metadata/byte_source.h"
#include "platform/companion_set.h"

namespace ml::imagefiles {

/// Below this a picture found in a file counts as a thumbnail, in pixels of its longer side.
inline constexpr int kSmallestPicture = 200;

/// What a picture is wanted for.
struct PictureRequest {
  const std::string& path;
  const metadata::ByteSource& file;  ///< the open file
  const ImageFileOptions& options;
  imaging::WantedSize wanted;  ///< asked with the full size of the picture as it is shown
  /// How the JPEG streams of cameras are scaled; empty: so that they just cover what is wanted.
  imaging::JpegScale smallJpegScale = {};
  int smallestPreview = kSmallestPicture;  ///< embedded ones below that only serve where there is nothing else
  const platform::CompanionSet* companions = nullptr;  ///< of the file; null: looked for where needed
  int threads = 2;                                     ///< for decoders that can use several

  imaging::JpegScale SmallJpegScale(imaging::Turn turn) const;
};

/// The picture that an image file of this format shows as. Throws LibraryError with the reason if there is none,
/// UserError if the file cannot be read.
Picture ReadPicture(const FormatRow& row, const PictureRequest& request);

/// The picture of the ".thm" beside a file; nothing if its format has no such companions, or there is none that can
/// be read.
std::optional<Picture> ReadThmPicture(const FormatRow& row, const PictureRequest& request);

}  // namespace ml::imagefiles
