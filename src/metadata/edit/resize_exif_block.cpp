#include "metadata/edit/resize_exif_block.h"

#include <string_view>

#include "metadata/exif_data.h"
#include "metadata/exif_values.h"
#include "metadata/ifd.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

using namespace tiff_tag;

constexpr std::uint32_t kUpright = 1, kInches = 2, kRatioSize = 8;
constexpr std::string_view kCanon = "Canon";

class Resizer {
 public:
  Resizer(ExifSegment& segment, int width, int height, std::uint32_t resolution, SizedBlocks sized)
      : segment_(segment),
        width_(static_cast<std::uint32_t>(width)),
        height_(static_cast<std::uint32_t>(height)),
        resolution_(resolution),
        sized_(sized == SizedBlocks::All) {}

  void Run() {
    // Found in a copy: what is written must not lead the walk.
    const auto bytes = segment_.Tiff().Bytes();
    const std::vector<std::byte> copy(bytes.begin(), bytes.end());
    const MemorySource source(copy);
    IfdWalker walker(source, segment_.Tiff().Order(), IfdPolicy{.followNext = false});
    walker.Walk(segment_.readLong(4), [&](const IfdEntry& entry) {
      const bool isCanon = entry.tag == kMake && readASCII(segment_.Tiff(), entry).starts_with(kCanon);
      sized_ = sized_ || isCanon;
      if (entry.tag != kExif) return VisitFirst(entry);
      return walker.Walk(entry.value, [&](const IfdEntry& inner) { return VisitExif(inner); });
    });
  }

 private:
  Visit VisitFirst(const IfdEntry& entry) {
    if (entry.tag == kOrientation) segment_.WriteNumber(entry, kUpright);
    if (resolution_ == 0) return Visit::Continue;
    const bool isRatio = entry.Is(IfdType::Rational) && entry.count == 1 &&
                         std::uint64_t{entry.value} + kRatioSize <= segment_.Tiff().Size();
    if ((entry.tag == kXResolution || entry.tag == kYResolution) && isRatio) {
      segment_.writeLong(entry.value, resolution_);
      segment_.writeLong(std::uint64_t{entry.value} + 4, 1);
    }
    if (entry.tag == kResolutionUnit) segment_.WriteNumber(entry, kInches);
    return Visit::Continue;
  }

  Visit VisitExif(const IfdEntry& entry) {
    if (!sized_ || width_ == 0 || height_ == 0) return Visit::Continue;
    if (entry.tag == kPixelWidth) segment_.WriteNumber(entry, width_);
    if (entry.tag == kPixelHeight) segment_.WriteNumber(entry, height_);
    return Visit::Continue;
  }

  ExifSegment& segment_;
  std::uint32_t width_, height_, resolution_;
  bool sized_;
};

}  // namespace

void ResizeExifBlock(ExifSegment& segment, int width, int height, std::uint32_t resolution, SizedBlocks sized) {
  try {
    Resizer(segment, width, height, resolution, sized).Run();
  } catch (ExifException) {
    return;  // what stands in front of the damage holds
  }
}

}  // namespace ml::metadata
