#pragma once

#include <string_view>

#include "metadata/edit/edited_file.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// Puts `text` into the comment field of a TIFF-based file, or into its description if there is no such field. Neither
/// becomes longer: the text is cut to the field, never inside a character. `read` tells the places and must have been
/// read from the present content. False, with nothing changed, if there is no field of a size that comments have.
bool WriteTiffComment(EditedFile& file, const ExifData& read, std::string_view text);

}  // namespace ml::metadata
