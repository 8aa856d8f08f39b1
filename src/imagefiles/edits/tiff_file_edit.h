#pragma once

#include <functional>

#include "imagefiles/edits/image_edits.h"
#include "metadata/edit/edited_file.h"

namespace ml::imagefiles {

/// An edit of a TIFF-based file; `base` is where its TIFF header stands.
using TiffFileEdit = std::function<void(metadata::EditedFile& file, std::uint64_t base)>;

/// Makes `edit` of such a file real, all of it or nothing. An ExifException out of it, and image data that would not
/// stay as they are, become a UserError with what the format says of a bad header, or the path and the reason.
void EditTiffFile(const ImageFile& image, const TiffFileEdit& edit, const EditTools& tools);

}  // namespace ml::imagefiles
