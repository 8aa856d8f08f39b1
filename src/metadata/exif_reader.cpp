#include "metadata/exif_reader.h"

#include <limits>

#include "metadata/byte_writer.h"
#include "metadata/exif_block.h"
#include "metadata/exif_walk.h"
#include "metadata/jpeg_segments.h"
#include "metadata/xmp.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kSmallestExifBlock = 31;  ///< bytes of a segment with its length field
constexpr std::size_t kLengthSize = 2;

constexpr std::string_view kExifMark("Exif\0\0", kExifPrefix);
constexpr std::string_view kXmpMark = "/xap/";
constexpr std::size_t kXmpVersionSize = 3;  ///< "1.0"; with its zero it stands between the mark and the packet

void KeepExifSegment(ExifData& data, const ByteSource& file, const JpegSegment& segment) {
  if (!data.exifBlock.empty()) return;
  data.exifBlock = file.ReadUpTo(segment.payload - kLengthSize, segment.payloadSize + kLengthSize);
  ReadExifBlock(data, data.exifBlock);
}

void ReadXmpSegment(ExifData& data, const JpegSegments& segments, const JpegSegment& segment) {
  const auto payload = segments.Payload(segment);
  const ByteView view(payload, ByteOrder::Big);
  const auto text = view.Text();
  const auto mark = text.find(kXmpMark);
  const bool isXmp = mark != std::string_view::npos && mark > 0;
  const auto packet = mark + kXmpMark.size() + kXmpVersionSize;
  if (isXmp && packet <= view.Size()) ReadXmp(data, view.From(packet));
}

/// Empty if it would be longer than segments are.
std::vector<std::byte> SegmentOf(std::span<const std::byte> tiff) {
  const auto size = kExifSegmentHead + tiff.size();
  if (size > std::numeric_limits<std::uint16_t>::max()) return {};
  ByteWriter out(ByteOrder::Big);
  out.Short(static_cast<std::uint16_t>(size));
  out.Text(kExifMark);
  out.Bytes(tiff);
  return out.Take();
}

void ReadTiff(ExifData& data, std::span<const std::byte> tiff) {
  const MemorySource source(tiff);
  const auto header = ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) return;
  data.littleEndian = header->order == ByteOrder::Little;
  ExifWalk(data, source, ByteView(tiff, header->order), BlockRules()).WalkIfd0(header->firstDirectory);
}

}  // namespace

void ReadExifBlock(ExifData& data, std::span<const std::byte> segment) {
  const ByteView whole(segment, ByteOrder::Big);
  if (segment.size() < kSmallestExifBlock || !whole.StartsWith("Exif", kLengthSize)) return;
  ReadTiff(data, segment.subspan(kExifSegmentHead));
}

void ReadExifTiff(ExifData& data, std::span<const std::byte> tiff) {
  if (ByteView(tiff, ByteOrder::Big).StartsWith(kExifMark)) tiff = tiff.subspan(kExifPrefix);
  ReadTiff(data, tiff);
  if (data.ifd0EntryCount > 0) data.exifBlock = SegmentOf(tiff);
}

void ReadTiffFile(ExifData& data, const ByteSource& file, std::uint64_t baseOffset, TiffMagic magic) {
  const auto header = ReadTiffHeader(file, baseOffset);
  if (!header || (magic == TiffMagic::Required && !header->IsTiff())) return;
  data.littleEndian = header->order == ByteOrder::Little;
  try {
    ExifWalk(data, file, ByteView(), FileRules(baseOffset)).WalkIfd0(header->firstDirectory);
  } catch (ExifException) {
    return;  // kept: a broken TIFF bears no mark
  }
}

void ReadJpegSegments(ExifData& data, const ByteSource& file) {
  JpegSegments segments(file);
  while (const auto segment = segments.Next()) {
    if (IsExifSegment(segments, *segment)) {
      KeepExifSegment(data, file, *segment);
    } else if (segment->marker == jpeg_marker::kApp1) {
      ReadXmpSegment(data, segments, *segment);
    } else if (segment->marker == jpeg_marker::kApp2 && !data.hasIccProfile) {
      data.hasIccProfile = segments.PayloadStartsWith(*segment, "ICC_PROFILE");
    }
  }
}

}  // namespace ml::metadata
