#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "imaging/jpeg/jpeg_transform.h"
#include "metadata/exif_data.h"

namespace ml::imagefiles {

/// A JPEG on its way from a raw file to a file of its own.
struct ExtractedJpeg {
  std::vector<std::byte> bytes;
  std::string note{};  ///< what could not be done
};

struct ExtractedJpegWishes {
  const metadata::ExifData* exif = nullptr;  ///< its shooting data; null if it keeps what it has
  bool replaceExif = false;                  ///< also where it has some
  bool upright = false;                      ///< turn it without loss, else only say how it is to be turned
};

/// Does what is wished. `turn` is what the raw file says; where that is nothing the JPEG's own orientation counts. What
/// a damaged JPEG does not allow is left out and noted; its compressed data change by turning alone. Throws UserError.
void FinishJpeg(ExtractedJpeg& jpeg, imaging::Turn turn, const ExtractedJpegWishes& wishes);

/// Whether these bytes, which the end of a file cut off, lack the end of the picture.
bool IsCutShort(const std::vector<std::byte>& jpeg);

}  // namespace ml::imagefiles
