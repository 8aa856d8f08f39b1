#include "imagefiles/edits/image_edits.h"

#include "imagefiles/edits/format_edits.h"
#include "imagefiles/messages.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

void RequireWritable(ImageFile& file, std::string_view refusal) {
  if (!file.MakeWritable()) throw platform::UserError(std::string(refusal));
}

void RequireSupport(std::string_view refusal) {
  if (!refusal.empty()) throw platform::UserError(std::string(refusal));
}

}  // namespace

void Rotate(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  RequireSupport(file.Row().rotateRefusal);
  RequireWritable(file, messages::kRotateReadOnly);
  file.Wrote();
  EditsOf(file.Row().format).rotate(file, turn, tools);
}

void SetComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  RequireSupport(file.Row().commentRefusal);
  RequireWritable(file, messages::kCommentReadOnly);
  file.Wrote();
  EditsOf(file.Row().format).setComment(file, text, tools);
}

void WriteIptc(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools) {
  const auto& row = file.Row();
  if (row.iptcHome == IptcHome::None) throw platform::UserError(messages::CannotHoldIptc(file.Path()));
  // Kept: the two sentences differ by a word.
  RequireWritable(file, row.format == Format::Png ? messages::kIptcReadOnly : messages::kIptcDataReadOnly);
  file.Wrote();
  EditsOf(row.format).writeIptc(file, block, tools);
}

void AdjustDateTime(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  const auto adjust = EditsOf(file.Row().format).adjustDateTime;
  if (adjust == nullptr) return;
  RequireWritable(file, messages::kUpdateReadOnly);
  // The time of a file whose date cannot be read is that of its last change: to write it would replace a date by an
  // accident.
  if (!file.Exif().dateRecorded) return;
  file.Wrote();
  adjust(file, seconds, tools);
}

}  // namespace ml::imagefiles
