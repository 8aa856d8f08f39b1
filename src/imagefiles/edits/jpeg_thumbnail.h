#pragma once

#include "imagefiles/edits/image_edits.h"
#include "metadata/edit/edited_file.h"
#include "metadata/edit/exif_thumbnail.h"

/// Thumbnails in the EXIF data of JPEG files, made of their own pictures.
namespace ml::imagefiles {

/// Makes the thumbnail of the picture as `jpeg` holds it, not turned; nothing if it is damaged. Decodes when it is
/// first asked, so that `jpeg`, which it does not own, may change until then.
metadata::ThumbnailMaker ThumbnailOf(const metadata::ByteSource& jpeg);

/// Makes the thumbnail anew as a part of another edit: where that cannot be, the old one stays. A file without EXIF
/// data gets none.
void RegenerateThumbnail(metadata::EditedFile& jpeg);

/// The whole of an edit of a JPEG or ".thm" file. False if the old thumbnail stays because there is no room for the new
/// one. Throws UserError, with nothing changed, if the file has no EXIF data or picture that can be read.
bool RegenerateThumbnail(ImageFile& file, const EditTools& tools);

}  // namespace ml::imagefiles
