#include "metadata/edit/exif_entry_places.h"

#include <algorithm>

#include "metadata/byte_writer.h"
#include "metadata/exif_block.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kMaxPlaces = 256;  ///< a few of each tag; a hostile file may repeat one at will
constexpr std::size_t kTagSize = 2, kValueOffset = 8;
constexpr std::uint16_t kSignedShort = 8;

bool IsShort(const IfdEntry& entry) { return entry.Is(IfdType::Short) || entry.type == kSignedShort; }

class Search {
 public:
  Search(std::vector<ExifEntryPlace>& found, const ExifBlock& block, std::span<const std::uint16_t> tags)
      : found_(found), block_(block), tags_(tags), tiff_(block.tiff) {}

  void Run() {
    const auto header = ReadTiffHeader(tiff_, 0);
    if (!header || !header->IsTiff()) return;
    try {
      WalkChain(header->firstDirectory, header->order);
    } catch (ExifException) {
      return;
    }
  }

 private:
  void WalkChain(std::uint32_t first, ByteOrder order) {
    IfdWalker walker(tiff_, order);
    const auto count = tiff_.ReadNumber(first, 2, order);
    const auto firstEnd = std::uint64_t{first} + 2 + std::uint64_t{count} * kIfdEntrySize;
    walker.Walk(first, [&](const IfdEntry& entry) {
      const bool inFirst = entry.position > first && entry.position < firstEnd;
      Take(entry, order, inFirst ? ExifDirectory::First : ExifDirectory::Chained);
      if (entry.tag == tiff_tag::kExif && inFirst) WalkExif(walker, entry.value);
      return found_.size() < kMaxPlaces ? Visit::Continue : Visit::Stop;
    });
  }

  void WalkExif(IfdWalker& walker, std::uint32_t offset) {
    try {
      walker.Walk(offset, {.followNext = false}, [&](const IfdEntry& entry) {
        Take(entry, walker.Order(), ExifDirectory::Exif);
        return found_.size() < kMaxPlaces ? Visit::Continue : Visit::Stop;
      });
    } catch (ExifException) {
      return;  // costs nothing of the chain
    }
  }

  void Take(IfdEntry entry, ByteOrder order, ExifDirectory directory) {
    if (std::ranges::find(tags_, entry.tag) == tags_.end()) return;
    entry.position += block_.position;
    found_.push_back({entry, order, directory, block_.position});
  }

  std::vector<ExifEntryPlace>& found_;
  const ExifBlock& block_;
  std::span<const std::uint16_t> tags_;
  MemorySource tiff_;
};

}  // namespace

std::vector<ExifEntryPlace> FindExifEntries(const ByteSource& jpeg, std::span<const std::uint16_t> tags) {
  std::vector<ExifEntryPlace> found;
  JpegSegments segments(jpeg);
  for (int i = 0; i < kMaxExifBlocks; ++i) {
    const auto block = NextExifBlock(segments);
    if (!block) break;
    Search(found, *block, tags).Run();
  }
  return found;
}

bool HoldsNumber(const ExifEntryPlace& place) {
  return place.entry.count == 1 && (IsShort(place.entry) || place.entry.Is(IfdType::Long));
}

std::uint32_t NumberIn(const ExifEntryPlace& place) {
  const auto raw = place.entry.rawValue;
  if (!IsShort(place.entry)) return raw;
  return place.order == ByteOrder::Big ? raw >> 16 : raw & 0xffff;  // a short stands first in either byte order
}

void OverwriteNumber(EditedFile& file, const ExifEntryPlace& place, std::uint32_t value) {
  if (!HoldsNumber(place)) return;
  ByteWriter out(place.order);
  IsShort(place.entry) ? out.Short(static_cast<std::uint16_t>(value)) : out.Long(value);
  file.Overwrite(place.entry.position + kValueOffset, out.View());
}

void SwapEntries(EditedFile& file, const ExifEntryPlace& first, const ExifEntryPlace& second) {
  const auto one = file.Read(first.entry.position + kTagSize, kIfdEntrySize - kTagSize);
  const auto other = file.Read(second.entry.position + kTagSize, kIfdEntrySize - kTagSize);
  if (one == other) return;
  file.Overwrite(first.entry.position + kTagSize, other);
  file.Overwrite(second.entry.position + kTagSize, one);
}

}  // namespace ml::metadata
