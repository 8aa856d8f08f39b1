#pragma once

#include <functional>

#include "imagefiles/edits/image_edits.h"
#include "imaging/jpeg/jpeg_transform.h"
#include "metadata/edit/edited_file.h"

/// Turning of JPEG files, without loss or by their orientation alone.
namespace ml::imagefiles {

/// Makes the thumbnail of the EXIF block anew from the picture of a JPEG.
using ThumbnailWriter = std::function<void(metadata::EditedFile&)>;

/// What makes a JPEG upright, by the orientation that it is shown by; None for 1, for what is no orientation and
/// without one.
imaging::JpegTransform TransformToUpright(const metadata::ByteSource& jpeg);

/// Turns by the orientation that the file is shown by, or by its first one if none of them has a meaning. Moves no
/// byte. False, with nothing changed, if there is none that can be overwritten.
bool TurnByOrientation(metadata::EditedFile& jpeg, imaging::Turn turn);

/// Turns the picture itself: all marker segments, and what stands behind the picture, stay as they are, but for
/// measures that change places with the sides and for orientations, which are upright from then on: what the file
/// shows is what was asked for, whoever shows it. Throws LibraryError if the picture is damaged; nothing is changed
/// then.
void TurnWithoutLoss(metadata::EditedFile& jpeg, imaging::JpegTransform transform, const ThumbnailWriter& regenerate);

/// The edit of the format.
void RotateJpeg(ImageFile& file, imaging::Turn turn, const EditTools& tools);

/// Turns the picture of a JPEG file as its orientation asks for, mirrored ones too. False if there is nothing to turn,
/// or the file is no JPEG; it is then left alone. Throws UserError as the other edits.
bool AutoRotate(ImageFile& file, const EditTools& tools);

}  // namespace ml::imagefiles
