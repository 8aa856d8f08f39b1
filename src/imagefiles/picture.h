#pragma once

#include "imaging/decoded_picture.h"

namespace ml::imagefiles {

/// Where a picture's pixels came from.
enum class PictureSource {
  Exif,      ///< the thumbnail in an EXIF block
  Thm,       ///< the ".thm" companion
  Viewing,   ///< the viewing JPEG beside an EOS-1D raw file
  Embedded,  ///< the preview inside a raw file
  Full,      ///< the image itself
};
/// "exif", "thm", "viewing", "embedded", "full"
const char* PictureSourceName(PictureSource source);

/// A picture as it is to be shown, turned if it has to be.
struct Picture {
  imaging::DecodedPicture decoded;  ///< its full size is that of what it came from
  PictureSource source = PictureSource::Full;
};

}  // namespace ml::imagefiles
