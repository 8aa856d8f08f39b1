#pragma once

#include <cstdint>

#include "imagefiles/image_file_options.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

/// Pictures that are stored lying on their side, and the JPEG streams that most of them are.
namespace ml::imagefiles {

/// None for anything but 90, 180 and 270.
imaging::Turn TurnOfDegrees(int degrees);
/// Of a value of tag 274; mirrored ones are not turned.
imaging::Turn TurnOfOrientation(std::uint32_t orientation);
/// How the picture of a raw file is turned: since the shot, or else as the camera was held.
imaging::Turn TurnOfShot(const metadata::ExifData& exif);
/// What the orientation in the EXIF blocks of a JPEG asks for.
imaging::Turn RecordedTurn(const metadata::ByteSource& jpeg);
/// The same if the options say that JPEG files are turned.
imaging::Turn JpegTurn(const metadata::ByteSource& jpeg, const ImageFileOptions& options);

/// How a JPEG stream in a file is decoded.
struct JpegPlace {
  std::uint64_t offset = 0;
  imaging::Turn turn = imaging::Turn::None;
};

/// The least scale at which the picture, once it is turned, covers what is wanted.
imaging::JpegScale ScaleToCover(const imaging::WantedSize& wanted, imaging::Turn turn);
/// The picture turned, red-green-blue. Throws LibraryError.
imaging::DecodedPicture DecodeTurnedJpeg(const metadata::ByteSource& file, const JpegPlace& place,
                                         const imaging::JpegScale& scale);
imaging::DecodedPicture TurnPicture(imaging::DecodedPicture picture, imaging::Turn turn);

}  // namespace ml::imagefiles
