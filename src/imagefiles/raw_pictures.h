#pragma once

#include <optional>

#include "imagefiles/picture_reader.h"
#include "metadata/file_range.h"

/// Raw files show as the JPEG that the camera put into them, turned as the file says. Where there is none of some
/// size, the sensor data are developed at half size.
namespace ml::imagefiles {

/// For raw files, those that count as plain images included, but for EOS-1D ones. Throws as ReadPicture.
Picture ReadRawPicture(Format format, const PictureRequest& request);
/// The viewing JPEG beside an EOS-1D raw file, else as ReadRawPicture.
Picture ReadEos1DPicture(const PictureRequest& request);

/// Where a raw file keeps the JPEG that ReadRawPicture() shows; nothing if there is none.
std::optional<metadata::FileRange> FindRawJpeg(Format format, const metadata::ByteSource& file);

/// The turn recorded in a raw file.
imaging::Turn RawTurn(Format format, const metadata::ByteSource& file);

}  // namespace ml::imagefiles
