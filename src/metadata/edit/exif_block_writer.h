#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "metadata/edit/edited_file.h"
#include "metadata/edit/exif_segment.h"
#include "metadata/edit/exif_thumbnail.h"

/// EXIF segments between a JPEG and memory.
namespace ml::metadata {

/// The first EXIF segment; nothing if there is none. Throws UserError with the reason if it cannot be understood or the
/// file ends inside.
std::optional<ExifSegment> ReadExifSegment(const ByteSource& jpeg);

/// The same, but nothing as well where it cannot be understood.
std::optional<ExifSegment> ReadUsableExifSegment(const ByteSource& jpeg);

/// Makes it the one EXIF segment of the file, behind APP0: where there was one at this place already, it is replaced,
/// and all others are dropped. Throws UserError if this is no JPEG.
void PlaceExifSegment(EditedFile& jpeg, const ExifSegment& segment);

/// Puts `block`, a segment of another file from its length field on, into `target`: what it tells of the picture's size
/// is made true, the orientation is that of the target, and the thumbnail is made anew. `resolution` is in dots an
/// inch; 0 leaves what the block says. Throws UserError, with nothing changed, if the block is no EXIF segment.
void WriteExifBlock(EditedFile& target, std::vector<std::byte> block, std::uint32_t resolution,
                    const ThumbnailMaker& thumbnail);

/// Changes the comment in the file's own block, by the rules of WriteExifComment, and makes the thumbnail anew. Gives
/// the sentence that tells why nothing was changed.
[[nodiscard]] std::optional<std::string> WriteJpegComment(EditedFile& jpeg, std::string_view text,
                                                          const ThumbnailMaker& thumbnail);

/// Makes the thumbnail of the first EXIF segment anew. False, with nothing changed, if there is no room for one. Throws
/// UserError with the reason if there is no segment that can be understood.
bool WriteJpegThumbnail(EditedFile& jpeg, const ThumbnailMaker& thumbnail);

}  // namespace ml::metadata
