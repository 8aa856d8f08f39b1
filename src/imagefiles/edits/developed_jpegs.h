#pragma once

#include <string>

#include "imagefiles/develop_library.h"
#include "imagefiles/edits/image_edits.h"

/// JPEG files that are made by developing a raw file. Without a library, null, both refuse.
namespace ml::imagefiles {

struct EmbeddedJpegSettings {
  int width = 0;     ///< "RegenEmbeddedJpegWidth": of wider pictures, in pixels; the height follows
  int quality = 90;  ///< "RegenEmbeddedJpegQuality", 0..100
};

/// Puts a new preview into a CRW file, made of its own sensor data, which stay as they are. Throws UserError with the
/// file as it was.
void RegenerateEmbeddedJpeg(ImageFile& file, const EmbeddedJpegSettings& settings, DevelopLibrary* library,
                            const EditTools& tools);

struct ViewingJpegSettings {
  int quality = 95;   ///< 0..100
  bool half = false;  ///< half the width and height of the picture
};

/// Makes the viewing JPEG of the EOS-1D raw file at `path`: beside it, with its shooting data and its orientation.
/// Gives the path of the new file. Throws UserError: also if there is a file of that name already.
std::string MakeViewingJpeg(const std::string& path, const ViewingJpegSettings& settings, DevelopLibrary* library,
                            const EditTools& tools);

}  // namespace ml::imagefiles
