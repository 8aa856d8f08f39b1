#include "imagefiles/edits/crw_edits.h"

#include <functional>

#include "imagefiles/edits/companion_edits.h"
#include "imagefiles/edits/turned_orientation.h"
#include "imagefiles/messages.h"
#include "metadata/ciff.h"
#include "metadata/crw_file.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/crw_writer.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

using metadata::EditedFile;
using platform::UserError;

std::string ThmOf(const ImageFile& file, const EditTools& tools) { return tools.companions.Find(file.Path()).thm; }

/// Throws UserError unless sensor data and preview are what they were.
void RequireSamePictures(const metadata::ByteSource& original, const metadata::ByteSource& edited,
                         const std::string& path) {
  const auto root = metadata::ReadCiffRootHeap(original);
  for (const auto& record : metadata::ReadCiffRoot(original, root)) {
    if (record.tag != metadata::ciff_tag::kRawData && record.tag != metadata::ciff_tag::kPreview) continue;
    const auto range = metadata::CutToSource({record.position, record.size}, original);
    if (!metadata::SameBytes(original, range, edited, range)) throw UserError(messages::DamagedForEdit(path));
  }
}

/// `edit` gives whether the file has what is to be changed.
bool EditCrw(const ImageFile& file, const EditTools& tools, const std::function<bool(EditedFile&)>& edit) {
  const platform::ReadableFile crw(file.Path(), *tools.edit.fileSystem);
  const metadata::FileSource source(crw);
  EditedFile edited(source);
  if (!edit(edited)) return false;
  metadata::ApplyEdit(crw, edited, tools.edit,
                      [&](const metadata::ByteSource& result) { RequireSamePictures(source, result, file.Path()); });
  return true;
}

int RotationOf(const ImageFile& file, const EditTools& tools) {
  const platform::ReadableFile crw(file.Path(), *tools.edit.fileSystem);
  return metadata::ReadCrwBasics(metadata::FileSource(crw)).rotation.value_or(0);
}

}  // namespace

void RotateCrw(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  const auto edit = [&](EditedFile& edited) { return metadata::TurnCrw(edited, DegreesOf(turn)); };
  if (!EditCrw(file, tools, edit)) throw UserError(messages::NoRotationRecord(file.Path()));
  OrientCompanion(ThmOf(file, tools), RotationOf(file, tools), tools);
}

void AdjustCrwDate(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  EditCrw(file, tools, [&](EditedFile& edited) { return metadata::AdjustCrwTime(edited, seconds); });
  AdjustCompanionDates(ThmOf(file, tools), seconds, tools);
}

void SetCrwComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  const auto thm = ThmOf(file, tools);
  const auto edit = [&](EditedFile& edited) { return metadata::WriteCrwComment(edited, text); };
  const bool inRecord = EditCrw(file, tools, edit);
  if (!inRecord && thm.empty()) throw UserError(messages::NoCrwComment(file.Path()));
  SetCompanionComment(thm, text, tools);
}

void AdjustAviDate(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  AdjustCompanionDates(ThmOf(file, tools), seconds, tools);
}

void SetAviComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  const auto thm = ThmOf(file, tools);
  if (thm.empty()) throw UserError(messages::NoThm(file.Path()));
  SetCompanionComment(thm, text, tools);
}

}  // namespace ml::imagefiles
