#include "imaging/jp2/jp2_cost.h"

#include <algorithm>

namespace ml::imaging {
namespace {

/// About 200 bytes each.
constexpr long long kMaxPieces = 2'000'000;
/// Two bytes each.
constexpr long long kMaxPackets = 32'000'000;

long long Pieces(long long side, int exponent) { return (side >> std::clamp(exponent, 0, 31)) + 2; }

}  // namespace

bool IsBearable(const Jp2Tile& tile) {
  long long pieces = 0, mostPrecincts = 0;
  std::size_t mostLevels = 0;
  for (const auto& component : tile.components) {
    const auto levels = component.precincts.size();
    mostLevels = std::max(mostLevels, levels);
    for (std::size_t level = 0; level < levels; ++level) {
      const auto halved = static_cast<int>(levels - 1 - level);
      const auto width = (tile.width / component.stepX) >> halved, height = (tile.height / component.stepY) >> halved;
      const auto& precinct = component.precincts[level];
      const auto precincts = Pieces(width, precinct.width) * Pieces(height, precinct.height);
      const auto blocks = Pieces(width, std::min(component.blockWidth, precinct.width - 1)) *
                          Pieces(height, std::min(component.blockHeight, precinct.height - 1));
      mostPrecincts = std::max(mostPrecincts, precincts);
      pieces += precincts + blocks;
      if (pieces > kMaxPieces) return false;
    }
  }
  const auto perLayer = static_cast<long long>(mostLevels * tile.components.size()) * mostPrecincts;
  return perLayer <= kMaxPackets && perLayer * tile.layers <= kMaxPackets;
}

}  // namespace ml::imaging
