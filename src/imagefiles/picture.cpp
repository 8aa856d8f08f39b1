#include "imagefiles/picture.h"

namespace ml::imagefiles {

const char* PictureSourceName(PictureSource source) {
  switch (source) {
    case PictureSource::Exif:
      return "exif";
    case PictureSource::Thm:
      return "thm";
    case PictureSource::Viewing:
      return "viewing";
    case PictureSource::Embedded:
      return "embedded";
    case PictureSource::Full:
      break;
  }
  return "full";
}

}  // namespace ml::imagefiles
