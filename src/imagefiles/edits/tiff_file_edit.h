#pragma once

#include <functional>
#include <optional>

#include "imagefiles/edits/image_edits.h"
#include "metadata/edit/edited_file.h"
#include "metadata/tiff_raw.h"

namespace ml::imagefiles {

struct TiffPlace {
  std::uint64_t base = 0;  ///< of the TIFF header in the file
  metadata::TiffMagic magic = metadata::TiffMagic::Required;
};
/// Where the formats that build on TIFF have their directories; nothing for the others.
std::optional<TiffPlace> FindTiffPlace(Format format, const metadata::ByteSource& file);

/// An edit of a TIFF-based file; `base` is where its TIFF header stands.
using TiffFileEdit = std::function<void(metadata::EditedFile& file, std::uint64_t base)>;

/// Makes `edit` of such a file real, all of it or nothing. An ExifException out of it, and image data that would not
/// stay as they are, become a UserError with what the format says of a bad header, or the path and the reason.
void EditTiffFile(const ImageFile& image, const TiffFileEdit& edit, const EditTools& tools);

}  // namespace ml::imagefiles
