#include "metadata/edit/exif_block_writer.h"

#include <utility>

#include "metadata/edit/exif_comment_writer.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/edit/orientation_writer.h"
#include "metadata/edit/resize_exif_block.h"
#include "metadata/exif_block.h"
#include "metadata/jpeg_size.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::uint64_t kLengthSize = 2;

/// Null where there is no segment whose comment could be changed.
std::optional<ExifSegment> SegmentForComment(const ByteSource& jpeg) {
  try {
    return ReadExifSegment(jpeg);
  } catch (const platform::UserError&) {
    return std::nullopt;  // what is no EXIF block has no comment field
  }
}

}  // namespace

std::optional<ExifSegment> ReadExifSegment(const ByteSource& jpeg) {
  const auto found = FindExifSegment(jpeg);
  if (!found) return std::nullopt;
  if (found->cut) throw platform::UserError(messages::kExifCut);
  return ExifSegment(jpeg.Read(found->payload - kLengthSize, found->payloadSize + kLengthSize));
}

void PlaceExifSegment(EditedFile& jpeg, const ExifSegment& segment) {
  const auto bytes = BuildJpegSegment(jpeg_marker::kApp1, segment.Payload());
  const auto place = PlaceBehind(jpeg, {jpeg_marker::kApp0});
  const auto old = FindExifSegment(jpeg);
  const bool stays = old && old->offset == place;
  DropSegments(jpeg, [&](const JpegSegments& segments, const JpegSegment& one) {
    return IsExifSegment(segments, one) && !(stays && one.offset == place);
  });
  jpeg.Replace({place, stays ? RangeOf(*old).size : 0}, bytes);
}

void WriteExifBlock(EditedFile& target, std::vector<std::byte> block, std::uint32_t resolution,
                    const ThumbnailMaker& thumbnail) {
  ExifSegment segment(std::move(block));
  const auto orientation = FindExifOrientation(target);
  const auto size = ReadJpegSize(target);
  ResizeExifBlock(segment, size ? size->width : 0, size ? size->height : 0, resolution);
  if (thumbnail) ReplaceThumbnail(segment, thumbnail);
  PlaceExifSegment(target, segment);
  const auto place = FindExifOrientation(target);
  if (orientation && place) WriteOrientation(target, *place, orientation->value);
}

void WriteJpegComment(EditedFile& jpeg, std::string_view text, const ThumbnailMaker& thumbnail) {
  auto segment = SegmentForComment(jpeg);
  if (!segment) throw platform::UserError(messages::kNoJpegComment);
  WriteExifComment(*segment, text);
  if (thumbnail) ReplaceThumbnail(*segment, thumbnail);
  PlaceExifSegment(jpeg, *segment);
}

bool WriteJpegThumbnail(EditedFile& jpeg, const ThumbnailMaker& thumbnail) {
  auto segment = ReadExifSegment(jpeg);
  if (!segment) throw platform::UserError(messages::kExifNotExif);
  if (!ReplaceThumbnail(*segment, thumbnail)) return false;
  const auto old = FindExifSegment(jpeg);
  jpeg.Replace(RangeOf(*old), BuildJpegSegment(jpeg_marker::kApp1, segment->Payload()));
  return true;
}

}  // namespace ml::metadata
