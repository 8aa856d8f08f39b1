#include "imagefiles/edits/companion_edits.h"

#include "imagefiles/messages.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/orientation_writer.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

/// A companion is a JPEG whatever its name ends in.
ImageFile JpegAt(const std::string& path, const EditTools& tools) {
  return ImageFile(RowOf(Format::Jpeg), path, tools.options);
}

}  // namespace

void SetCompanionComment(const std::string& jpeg, const std::string& text, const EditTools& tools) {
  if (jpeg.empty()) return;
  auto file = JpegAt(jpeg, tools);
  SetComment(file, text, tools);
}

void WriteCompanionIptc(const std::string& jpeg, const metadata::IptcBlock& block, const EditTools& tools) {
  if (jpeg.empty()) return;
  auto file = JpegAt(jpeg, tools);
  WriteIptc(file, block, tools);
}

void AdjustCompanionDates(const std::string& jpeg, std::int64_t seconds, const EditTools& tools) {
  if (jpeg.empty()) return;
  auto file = JpegAt(jpeg, tools);
  AdjustDateTime(file, seconds, tools);
}

void OrientCompanion(const std::string& jpeg, int degrees, const EditTools& tools) {
  if (jpeg.empty()) return;
  auto file = JpegAt(jpeg, tools);
  if (!file.MakeWritable()) throw platform::UserError(std::string(messages::kRotateReadOnly));
  file.Wrote();
  metadata::EditFile(
      jpeg, [&](metadata::EditedFile& edited) { metadata::WriteOrientationToExif(edited, degrees); }, tools.edit);
}

}  // namespace ml::imagefiles
