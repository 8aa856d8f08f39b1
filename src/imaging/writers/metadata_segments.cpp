#include "imaging/writers/metadata_segments.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "imaging/writers/picture_thumbnail.h"
#include "metadata/byte_writer.h"
#include "metadata/edit/edited_file.h"
#include "metadata/edit/exif_block_builder.h"
#include "metadata/edit/exif_block_writer.h"
#include "metadata/edit/icc_writer.h"
#include "metadata/edit/iptc_jpeg.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/edit/resize_exif_block.h"
#include "metadata/exif_block.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using metadata::ByteOrder;
using metadata::ByteWriter;
using metadata::EditedFile;
namespace jpeg_marker = metadata::jpeg_marker;

constexpr std::uint8_t kStartOfFrame = 0xc0;
constexpr int kStartSize = 2;  ///< of the start of image

void AppendMarker(ByteWriter& out, std::uint8_t marker) {
  out.Byte(0xff);
  out.Byte(marker);
}

/// A JPEG that tells its size and holds no data, for the writers of segments to work on.
std::vector<std::byte> EmptyJpeg(const PixelRows& pixels) {
  constexpr std::uint8_t kBits = 8;
  ByteWriter frame(ByteOrder::Big);
  frame.Byte(kBits);
  frame.Short(static_cast<std::uint16_t>(pixels.height));
  frame.Short(static_cast<std::uint16_t>(pixels.width));
  frame.Byte(1);
  frame.Byte(1);
  frame.Byte(0x11);
  frame.Byte(0);
  constexpr std::byte scan[] = {std::byte{1}, std::byte{1}, std::byte{0}, std::byte{0}, std::byte{63}, std::byte{0}};
  ByteWriter out(ByteOrder::Big);
  AppendMarker(out, jpeg_marker::kStartOfImage);
  out.Bytes(metadata::BuildJpegSegment(kStartOfFrame, frame.View()));
  out.Bytes(metadata::BuildJpegSegment(jpeg_marker::kStartOfScan, scan));
  AppendMarker(out, jpeg_marker::kEndOfImage);
  return out.Take();
}

bool IsUsable(const std::vector<std::byte>& block) {
  try {
    const metadata::ExifSegment segment(block);
    return !segment.Layout().broken;
  } catch (const platform::UserError&) {
    return false;
  }
}

/// False without a source.
bool PlaceExif(EditedFile& jpeg, const PixelRows& pixels, const MetadataBlocks& blocks, int resolution) {
  const bool usable = !blocks.exif.empty() && IsUsable(blocks.exif);
  if (!usable && !blocks.shooting) return false;
  auto block = usable ? blocks.exif : metadata::BuildExifBlock(*blocks.shooting);
  const auto dots = static_cast<std::uint32_t>(std::max(resolution, 0));
  metadata::ExifSegment segment(std::move(block));
  metadata::ResizeExifBlock(segment, pixels.width, pixels.height, dots, metadata::SizedBlocks::All);
  metadata::WriteExifBlock(jpeg, segment.Data(), dots, ThumbnailOf(pixels));
  // Where there is a field; all blocks that are built have one.
  const bool commented = blocks.shooting && !blocks.shooting->comment.empty();
  if (commented) std::ignore = metadata::WriteJpegComment(jpeg, blocks.shooting->comment, nullptr);
  return true;
}

void PlaceFurtherApp1(EditedFile& jpeg, const MetadataBlocks& blocks) {
  for (const auto& payload : blocks.furtherApp1) {
    if (payload.size() > metadata::kMaxSegmentPayload) continue;  // came from no segment
    const auto place = metadata::PlaceBehind(jpeg, {jpeg_marker::kApp1});
    jpeg.Insert(place, metadata::BuildJpegSegment(jpeg_marker::kApp1, payload));
  }
}

}  // namespace

std::vector<std::byte> MetadataSegments(const PixelRows& pixels, const MetadataBlocks& blocks, int resolution) {
  const auto empty = EmptyJpeg(pixels);
  const metadata::MemorySource source(empty);
  EditedFile jpeg(source);
  PlaceExif(jpeg, pixels, blocks, resolution);
  PlaceFurtherApp1(jpeg, blocks);
  metadata::WriteJpegIptc(jpeg, blocks.iptc);
  if (!blocks.icc.empty()) metadata::WriteIccProfile(jpeg, blocks.icc);
  return jpeg.Read(kStartSize, jpeg.Size() - empty.size());
}

std::optional<std::vector<std::byte>> ExifForBox(const PixelRows& pixels, const MetadataBlocks& blocks,
                                                 int resolution) {
  const auto empty = EmptyJpeg(pixels);
  const metadata::MemorySource source(empty);
  EditedFile jpeg(source);
  if (!PlaceExif(jpeg, pixels, blocks, resolution)) return std::nullopt;
  const auto segment = metadata::ReadExifSegment(jpeg);
  if (!segment) return std::nullopt;
  const auto tiff = segment->Tiff().Bytes();
  return std::vector(tiff.begin(), tiff.end());
}

}  // namespace ml::imaging
