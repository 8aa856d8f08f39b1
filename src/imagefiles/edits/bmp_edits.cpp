#include "imagefiles/edits/bmp_edits.h"

#include "imagefiles/messages.h"
#include "imaging/dib/bmp_turn.h"
#include "imaging/read_whole.h"
#include "metadata/edit/apply_edit.h"
#include "platform/errors.h"

namespace ml::imagefiles {

void RotateBmp(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  const auto edit = [&](metadata::EditedFile& bmp) {
    const auto old = imaging::ReadWhole(bmp);
    bmp.Replace({0, bmp.Size()}, imaging::TurnBmp(old, turn));
  };
  try {
    metadata::EditFile(file.Path(), edit, tools.edit);
  } catch (const platform::LibraryError& error) {
    throw platform::UserError(messages::UnableToTurn(file.Path(), error.what()));
  }
}

}  // namespace ml::imagefiles
