#include "metadata/canon/flash_text.h"

#include <algorithm>
#include <iterator>

#include "metadata/code_words.h"

namespace ml::metadata {
namespace {

constexpr std::uint16_t kExternal = 0x4000, kHighSpeed = 0x10, kSecondCurtain = 0x80;
constexpr std::uint16_t kModeOff = 0;

/// The first bit that is set counts.
constexpr CodeWord kControls[] = {{0x01, " Manual"}, {0x02, " TTL"}, {0x04, " A-TTL"}, {0x08, " E-TTL"}};

constexpr CodeWord kModes[] = {{1, " Auto"},
                               {3, " + Red eye reduction"},
                               {4, " + Slow synchro"},
                               {5, " Auto + Red eye reduction"},
                               {6, " + Red eye reduction"}};

std::string UnitText(std::uint16_t detail) {
  if ((detail & kExternal) == 0) return "Built-in";
  std::string text = "External";
  const auto* control = std::ranges::find_if(kControls, [&](const auto& row) { return (detail & row.code) != 0; });
  if (control != std::end(kControls)) text += control->word;
  return (detail & kHighSpeed) != 0 ? text + " High speed sync" : text;
}

}  // namespace

std::string CanonFlashText(std::uint16_t mode, std::uint16_t detail) {
  if ((detail & (kExternal | kBuiltInFlash)) == 0) return "Off";
  auto text = mode == kModeOff ? "Off" : UnitText(detail).append(WordOf(kModes, mode, ""));
  // Kept: the curtain is told even of a flash that the mode calls off.
  return (detail & kSecondCurtain) != 0 ? text + " + 2nd curtain sync" : text;
}

}  // namespace ml::metadata
