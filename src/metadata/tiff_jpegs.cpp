#include "metadata/tiff_jpegs.h"

#include <utility>

#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

using namespace tiff_tag;

constexpr std::uint32_t kOldJpeg = 6, kJpeg = 7;  ///< values of the compression tag
constexpr std::uint32_t kMaxSubDirectories = 16;

}  // namespace

void TiffJpegs::TakeDirectory(std::uint32_t offset) {
  Directory found;
  try {
    walker_.Walk(offset, [&](const IfdEntry& entry) {
      Note(entry, found);
      return Visit::Continue;
    });
  } catch (ExifException) {
    // What was found until then counts.
  }
  if (found.jpegOffset != 0) Offer(base_ + found.jpegOffset, found.jpegLength);
  const bool jpeg = found.compression == kOldJpeg || found.compression == kJpeg;
  if (jpeg && found.stripOffset != 0) Offer(base_ + found.stripOffset, found.stripLength);
  if (found.subDirectories.count != 0) subDirectories_.push_back(found.subDirectories);
  if (found.exif != 0) exif_ = found.exif;
}

void TiffJpegs::TakeChain(std::uint32_t offset) {
  for (std::size_t i = 0; i < IfdWalker::kMaxDirectories && offset != 0; ++i) {
    TakeDirectory(offset);
    offset = NextDirectory(source_, order_, base_, offset);
  }
}

void TiffJpegs::TakeSubDirectories() {
  for (const auto& entry : std::exchange(subDirectories_, {})) {
    const auto offsets = ReadIfdNumbers(source_, order_, entry, IfdValueRange(entry, base_), kMaxSubDirectories);
    for (const auto offset : offsets) TakeDirectory(offset);
  }
}

void TiffJpegs::Offer(std::uint64_t position, std::uint64_t length) {
  const auto range = CutToSource({position, length}, source_);
  if (longest_ && range.size <= longest_->size) return;
  const auto start = source_.ReadUpTo(range.position, 3);
  if (range.size > 3 && ByteView(start, ByteOrder::Big).StartsWith("\xff\xd8\xff")) longest_ = range;
}

void TiffJpegs::Note(const IfdEntry& entry, Directory& found) {
  const bool single = entry.count == 1;  // several strips would be several streams
  switch (entry.tag) {
    case kCompression:
      found.compression = entry.value;
      return;
    case kJpegOffset:
      found.jpegOffset = entry.value;
      return;
    case kJpegLength:
      found.jpegLength = entry.value;
      return;
    case kStripOffsets:
      found.stripOffset = single ? entry.value : 0;
      return;
    case kStripByteCounts:
      found.stripLength = single ? entry.value : 0;
      return;
    case kSubDirectories:
      found.subDirectories = entry;
      return;
    case kExif:
      found.exif = entry.value;
      return;
    default:
      return;
  }
}

}  // namespace ml::metadata
