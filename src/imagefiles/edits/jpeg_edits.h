#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "imagefiles/edits/image_edits.h"
#include "metadata/edit/edited_file.h"

/// Edits of JPEG files, ".thm" companions among them.
namespace ml::imagefiles {

/// An edit of segments: `edit` changes the file, what the file tells of further pictures in it is kept true, and
/// nothing is written if the compressed data would not stay as they are. Throws UserError with the file as it was.
void EditJpeg(const std::string& path, const EditTools& tools, const std::function<void(metadata::EditedFile&)>& edit);

/// Writes the EXIF field and, where the options say so, the IPTC caption; a caption makes up for a field that is
/// missing or too small.
void SetJpegComment(ImageFile& file, const std::string& text, const EditTools& tools);
void AdjustJpegDateTime(ImageFile& file, std::int64_t seconds, const EditTools& tools);

/// Puts the shooting data of another file, `source`, with its IPTC data into a JPEG. The orientation stays that of the
/// JPEG, `comment`, if there is one and a field for it, takes the place of the source's, and the thumbnail is made
/// anew. `resolution` is in dots an inch, 0 for that of the source.
void TakeOverMetadata(metadata::EditedFile& jpeg, const metadata::ExifData& source, std::uint32_t resolution,
                      const std::optional<std::string>& comment = std::nullopt);
/// The whole of such an edit; a ".thm" keeps its comment.
void WriteExifBlock(ImageFile& target, const metadata::ExifData& source, std::uint32_t resolution,
                    const EditTools& tools);

}  // namespace ml::imagefiles
