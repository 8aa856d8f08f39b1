#pragma once

#include <cstdint>
#include <string_view>

#include "metadata/edit/edited_file.h"

/// What changes in place in a CRW file of either byte order. All throw UserError with the reason if its header, root or
/// image properties are not sound; false, with nothing changed, if there is no such record.
namespace ml::metadata {

/// Turns the picture on by clockwise degrees.
bool TurnCrw(EditedFile& file, int degrees);
/// Adds to the time that the camera noted. Throws UserError as well if the sum is no time.
bool AdjustCrwTime(EditedFile& file, std::int64_t seconds);

/// Texts of so many bytes are not taken.
inline constexpr std::size_t kCrwCommentLimit = 256;
/// Puts `text`, cut to the field and filled up with blanks, into the comment. False as well for a text over the limit.
bool WriteCrwComment(EditedFile& file, std::string_view text);

}  // namespace ml::metadata
