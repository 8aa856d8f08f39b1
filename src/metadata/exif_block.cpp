#include "metadata/exif_block.h"

#include "metadata/ifd.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kSmallestExif = 9;  ///< payload bytes: a length field above 10
constexpr std::size_t kMaxThumbnails = 8;   ///< cameras write one or two

/// Visits the entries of the directory chain of every EXIF block, up to a limit, until the visitor stops. A damaged
/// block costs only what comes after the damage in it.
template <class Visitor>
void WalkExifChains(const ByteSource& source, Visitor&& visitor) {
  JpegSegments segments(source);
  for (int i = 0; i < kMaxExifBlocks; ++i) {
    const auto block = NextExifBlock(segments);
    if (!block) return;
    const MemorySource tiff(block->tiff);
    const auto header = ReadTiffHeader(tiff, 0);
    if (!header || !header->IsTiff()) continue;
    try {
      IfdWalker walker(tiff, header->order);
      const auto visit = [&](const IfdEntry& entry) { return visitor(*block, entry); };
      if (walker.Walk(header->firstDirectory, visit) == Visit::Stop) return;
    } catch (ExifException) {
      continue;
    }
  }
}

}  // namespace

std::optional<int> DegreesOfOrientation(std::uint32_t orientation) {
  switch (orientation) {
    case 1:
      return 0;
    case 3:
      return 180;
    case 6:
      return 90;
    case 8:
      return 270;
    default:
      return std::nullopt;
  }
}

bool IsExifSegment(const JpegSegments& segments, const JpegSegment& segment) {
  return segment.marker == jpeg_marker::kApp1 && segment.payloadSize >= kSmallestExif &&
         segments.PayloadStartsWith(segment, "Exif");
}

std::optional<ExifBlock> NextExifBlock(JpegSegments& segments) {
  while (const auto segment = segments.Next()) {
    if (!IsExifSegment(segments, *segment)) continue;
    auto bytes = segments.Payload(*segment);
    if (bytes.size() < kExifPrefix) return std::nullopt;  // the file became shorter
    bytes.erase(bytes.begin(), bytes.begin() + kExifPrefix);
    return ExifBlock{segment->payload + kExifPrefix, std::move(bytes)};
  }
  return std::nullopt;
}

std::optional<int> ReadOrientationFromExif(const ByteSource& source) {
  std::optional<int> degrees;
  WalkExifChains(source, [&](const ExifBlock&, const IfdEntry& entry) {
    if (entry.tag == tiff_tag::kOrientation) degrees = DegreesOfOrientation(entry.value);
    return degrees ? Visit::Stop : Visit::Continue;
  });
  return degrees;
}

std::vector<std::uint64_t> FindExifThumbnails(const ByteSource& source) {
  std::vector<std::uint64_t> positions;
  WalkExifChains(source, [&](const ExifBlock& block, const IfdEntry& entry) {
    if (entry.tag == tiff_tag::kJpegOffset) positions.push_back(block.position + entry.value);
    return positions.size() < kMaxThumbnails ? Visit::Continue : Visit::Stop;
  });
  return positions;
}

}  // namespace ml::metadata
