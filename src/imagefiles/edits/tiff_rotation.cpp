#include "imagefiles/edits/tiff_rotation.h"

#include "imagefiles/edits/tiff_edits.h"
#include "imagefiles/messages.h"
#include "imaging/tiff/turned_tiff.h"
#include "metadata/edit/apply_edit.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

using platform::UserError;

void OrientThumbnailOnly(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  try {
    RotateByTag(file, turn, tools);
  } catch (const UserError&) {
    throw UserError(std::string(messages::kThumbnailOnlyRotate));
  }
}

}  // namespace

void RotateTiff(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  if (file.Exif().isEos1DRaw) throw UserError(std::string(messages::kEos1DTiffRotate));
  if (file.Exif().tiffThumbnailOnly) return OrientThumbnailOnly(file, turn, tools);
  const platform::ReadableFile tiff(file.Path(), *tools.edit.fileSystem);
  const metadata::FileSource source(tiff);
  metadata::EditedFile edited(source);
  try {
    imaging::TurnTiff(edited, turn);
  } catch (const platform::LibraryError& error) {
    throw UserError(messages::UnableToReadTiff(error.Reason(), error.Description()));
  } catch (metadata::ExifException) {
    throw UserError(messages::UnableToReadTiff(std::string(messages::kInvalidTiff), file.Path()));
  }
  try {
    metadata::ApplyEdit(tiff, edited, tools.edit);
  } catch (const UserError& error) {
    throw UserError(messages::UnableToWriteTiff(file.Path(), error.what()));
  }
}

}  // namespace ml::imagefiles
