#include "imagefiles/edits/jpeg_edits.h"

#include <tuple>
#include <utility>

#include "imagefiles/edits/jpeg_thumbnail.h"
#include "imagefiles/messages.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/exif_block_builder.h"
#include "metadata/edit/exif_block_writer.h"
#include "metadata/edit/exif_dates_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/iptc_jpeg.h"
#include "metadata/edit/multi_picture.h"
#include "metadata/exif_comment.h"
#include "metadata/iptc/iptc_caption.h"
#include "platform/dates.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using metadata::EditedFile;
using platform::UserError;

void WriteComment(EditedFile& jpeg, const metadata::ExifData& exif, const std::string& text, bool caption) {
  const auto failure = metadata::WriteJpegComment(jpeg, text, ThumbnailOf(jpeg));
  if (!caption) {
    if (failure) throw UserError(*failure);
    return;
  }
  try {
    metadata::WriteJpegIptc(jpeg, metadata::WithCaption(exif, text));
  } catch (const UserError&) {
    throw UserError(failure.value_or(messages::kCaptionFailed));
  }
}

}  // namespace

void EditJpeg(const std::string& path, const EditTools& tools, const std::function<void(EditedFile&)>& edit) {
  const platform::ReadableFile file(path, *tools.edit.fileSystem);
  const metadata::FileSource source(file);
  EditedFile edited(source);
  try {
    edit(edited);
  } catch (metadata::ExifException) {
    throw UserError(messages::DamagedMetadata(path));
  }
  metadata::RealignMultiPicture(edited);
  metadata::RequireSameImageData(edited, metadata::JpegRest);
  metadata::ApplyEdit(file, edited, tools.edit);
}

void SetJpegComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  const auto& exif = file.Exif();
  EditJpeg(file.Path(), tools, [&](EditedFile& jpeg) { WriteComment(jpeg, exif, text, tools.options.iptcComments); });
}

void AdjustJpegDateTime(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  const auto text = platform::ExifDateText(static_cast<std::time_t>(file.Exif().shootingTime + seconds));
  EditJpeg(file.Path(), tools, [&](EditedFile& jpeg) { metadata::WriteJpegDates(jpeg, text); });
}

void TakeOverMetadata(EditedFile& jpeg, const metadata::ExifData& source, std::uint32_t resolution,
                      const std::optional<std::string>& comment) {
  auto block = source.exifBlock.empty() ? metadata::BuildExifBlock(source) : source.exifBlock;
  metadata::WriteExifBlock(jpeg, std::move(block), resolution, ThumbnailOf(jpeg));
  if (comment) std::ignore = metadata::WriteJpegComment(jpeg, *comment, nullptr);  // where there is a field
  if (!source.iptc.empty()) metadata::WriteJpegIptc(jpeg, {source.iptc, source.iptcSurroundings});
}

void WriteExifBlock(ImageFile& target, const metadata::ExifData& source, std::uint32_t resolution,
                    const EditTools& tools) {
  if (!target.MakeWritable()) throw UserError(std::string(messages::kUpdateReadOnly));
  target.Wrote();
  std::optional<std::string> comment;
  if (platform::EndsWithNoCase(target.Path(), ".thm")) comment = target.GetExifComment();
  EditJpeg(target.Path(), tools, [&](EditedFile& jpeg) { TakeOverMetadata(jpeg, source, resolution, comment); });
}

}  // namespace ml::imagefiles
