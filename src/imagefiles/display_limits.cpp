#include "imagefiles/display_limits.h"

#include <algorithm>
#include <array>

namespace ml::imagefiles {
namespace {

using imaging::PictureSize;

/// Sizes of previews, the larger first; 0 x 0 is unused.
struct PreviewSizes {
  std::array<PictureSize, 2> landscape, portrait;
};
constexpr PreviewSizes kD30{{{{1440, 960}, {720, 480}}}, {{{960, 1440}, {480, 720}}}};
constexpr PreviewSizes kG1{{{{640, 480}, {}}}, {{{480, 640}, {}}}};

bool Holds(PictureSize room, PictureSize preview) {
  return preview.width > 0 && room.width >= preview.width && room.height >= preview.height;
}

DisplayLimits Snapped(DisplayLimits limits, const PreviewSizes& sizes) {
  const PictureSize own{limits.maxWidth, limits.maxHeight}, wide{limits.altWidth, limits.altHeight};
  const auto* landscape =
      std::ranges::find_if(sizes.landscape, [&](auto size) { return Holds(own, size) || Holds(wide, size); });
  if (landscape != sizes.landscape.end()) limits.maxWidth = landscape->width, limits.maxHeight = landscape->height;
  const auto* portrait = std::ranges::find_if(sizes.portrait, [&](auto size) { return Holds(wide, size); });
  if (portrait != sizes.portrait.end()) limits.altWidth = portrait->width, limits.altHeight = portrait->height;
  return limits;
}

}  // namespace

DisplayLimits ApplyDisplayLimits(const PictureRoom& room, OptimiseSize optimiseSize) {
  const DisplayLimits limits{.maxWidth = std::max(room.width - 6, 1),
                             .maxHeight = std::max(room.height - 5, 1),
                             .altWidth = std::max(room.width + room.columnWidth - 6, 1),
                             .altHeight = std::max(room.height - 2, 1)};
  switch (optimiseSize) {
    case OptimiseSize::D30Raw:
      return Snapped(limits, kD30);
    case OptimiseSize::G1Raw:
      return Snapped(limits, kG1);
    case OptimiseSize::LargestImage:
      break;
  }
  return limits;
}

}  // namespace ml::imagefiles
