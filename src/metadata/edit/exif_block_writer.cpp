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

std::vector<std::byte> BytesOf(const ByteSource& jpeg, const JpegSegment& segment) {
  return jpeg.Read(segment.payload - kLengthSize, segment.payloadSize + kLengthSize);
}

}  // namespace

std::optional<ExifSegment> ReadExifSegment(const ByteSource& jpeg) {
  const auto found = FindExifSegment(jpeg);
  if (!found) return std::nullopt;
  if (found->cut) throw platform::UserError(messages::kExifCut);
  return ExifSegment(BytesOf(jpeg, *found));
}

std::optional<ExifSegment> ReadUsableExifSegment(const ByteSource& jpeg) {
  const auto found = FindExifSegment(jpeg);
  if (!found || found->cut) return std::nullopt;
  auto bytes = BytesOf(jpeg, *found);  // not in the try: that a file cannot be read is no matter of its structure
  try {
    return ExifSegment(std::move(bytes));
  } catch (const platform::UserError&) {
    return std::nullopt;
  }
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
  if (orientation && place) OverwriteNumber(target, *place, NumberIn(*orientation));
}

std::optional<std::string> WriteJpegComment(EditedFile& jpeg, std::string_view text, const ThumbnailMaker& thumbnail) {
  auto segment = ReadUsableExifSegment(jpeg);
  if (!segment) return messages::kNoJpegComment;
  if (auto refusal = WriteExifComment(*segment, text)) return refusal;
  if (thumbnail) ReplaceThumbnail(*segment, thumbnail);
  PlaceExifSegment(jpeg, *segment);
  return std::nullopt;
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
