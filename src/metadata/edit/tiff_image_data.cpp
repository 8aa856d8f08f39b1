#include "metadata/edit/tiff_image_data.h"

#include <algorithm>
#include <set>
#include <utility>

#include "metadata/edit/ifd_directory.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

using namespace tiff_tag;
struct PlaceTags {
  std::uint16_t offsets, sizes;
};
constexpr PlaceTags kPlaces[] = {
    {kStripOffsets, kStripByteCounts}, {kTileOffsets, kTileByteCounts}, {kJpegOffset, kJpegLength}};
constexpr std::uint32_t kMaxNumbers = 1 << 20;
constexpr std::size_t kMaxDirectories = 64;

class ImageDataWalk {
 public:
  ImageDataWalk(const ByteSource& source, ByteOrder order, std::uint64_t base)
      : source_(source), order_(order), base_(base) {}

  void Walk(std::uint32_t offset) {
    while (offset != 0 && visited_.size() < kMaxDirectories && visited_.insert(offset).second) {
      IfdDirectory directory;
      try {
        directory = ReadIfdDirectory(source_, order_, base_, offset);
      } catch (ExifException) {
        return;
      }
      for (const auto& tags : kPlaces) Take(directory, tags);
      for (const auto sub : Numbers(directory, kSubDirectories)) Walk(sub);
      offset = directory.next;
    }
  }
  std::vector<FileRange> Found() { return std::move(found_); }

 private:
  /// The value as numbers, as many as can be read.
  std::vector<std::uint32_t> Numbers(const IfdDirectory& directory, std::uint16_t tag) const {
    const auto* entry = directory.Find(tag);
    if (entry == nullptr) return {};
    const auto place = IfdValueRange(directory, static_cast<std::size_t>(entry - directory.entries.data()));
    return ReadIfdNumbers(source_, order_, *entry, place, kMaxNumbers);
  }

  void Take(const IfdDirectory& directory, const PlaceTags& tags) {
    const auto offsets = Numbers(directory, tags.offsets), sizes = Numbers(directory, tags.sizes);
    for (std::size_t i = 0; i < std::min(offsets.size(), sizes.size()); ++i) {
      if (sizes[i] > 0) found_.push_back({base_ + offsets[i], sizes[i]});
    }
  }

  const ByteSource& source_;
  ByteOrder order_;
  std::uint64_t base_;
  std::set<std::uint32_t> visited_;
  std::vector<FileRange> found_;
};

}  // namespace

std::vector<FileRange> TiffImageData(const ByteSource& source, std::uint64_t base, TiffMagic magic) {
  const auto header = ReadTiffHeader(source, base);
  if (!header || (magic == TiffMagic::Required && !header->IsTiff())) return {};
  ImageDataWalk walk(source, header->order, base);
  walk.Walk(header->firstDirectory);
  return walk.Found();
}

void RequireSameImageData(const EditedFile& edited, std::uint64_t base, TiffMagic magic) {
  const auto before = TiffImageData(edited.Original(), base, magic);
  const auto patches = edited.InPlace();
  if (!patches || TiffImageData(edited, base, magic) != before) throw ExifException::OutOfBounds;
  for (const auto& patch : patches->patches) {
    const bool hit = patch.oldBytes != patch.newBytes && std::ranges::any_of(before, [&](const FileRange& range) {
                       return patch.offset < range.End() && range.position < patch.offset + patch.newBytes.size();
                     });
    if (hit) throw ExifException::OutOfBounds;
  }
}

}  // namespace ml::metadata
