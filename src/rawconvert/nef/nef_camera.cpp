#include "rawconvert/nef/nef_camera.h"

#include <algorithm>
#include <iterator>

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::rawconvert {
namespace {

constexpr NefCamera kCameras[] = {
    {"NIKON D1", 0, 1324, 2012, 0x16161616, 0.838, 1.095},
    {"NIKON D1H", 2, 1324, 2012, 0x16161616, 1.347, 3.279},
    {"NIKON D2H", 3, 1648, 2496, 0x49494949, 2.8, 1.2},
    {"NIKON D1X", kNefD1X, 1324, 4024, 0x16161616, 1.91, 1.22},
    {"NIKON D100", kNefD100, 2024, 3037, 0x61616161, 3.5, 1.33},
    {"E5700", kNefE5700, 1924, 2576, 0xE1E1E1E1, 2.126, 1.197, 4},
};

}  // namespace

const NefCamera* FindNefCamera(std::string_view model) {
  const auto wanted = platform::AsciiLower(platform::TrimRight(model));
  const auto found = std::ranges::find_if(
      kCameras, [&](const NefCamera& camera) { return platform::AsciiLower(camera.model) == wanted; });
  return found == std::end(kCameras) ? nullptr : found;
}

}  // namespace ml::rawconvert
