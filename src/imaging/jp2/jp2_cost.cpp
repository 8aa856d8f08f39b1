#include "imaging/jp2/jp2_cost.h"

#include <algorithm>

namespace ml::imaging {
namespace {

/// About 200 bytes each.
constexpr long long kMaxPieces = 2'000'000;
/// Two bytes each.
constexpr long long kMaxPackets = 32'000'000;

// Markers of ISO/IEC 15444-1, annex A.
constexpr std::uint32_t kSize = 0xff51, kCoding = 0xff52, kComponentCoding = 0xff53, kTilePart = 0xff90;
constexpr std::size_t kMaxLevels = 33;

/// Image and tile sizes, then three bytes a component.
void ReadSize(metadata::ByteView segment, Jp2Tile& tile) {
  const auto side = [&](std::size_t at) -> long long {
    const auto end = segment.readLong(at), start = segment.readLong(at + 8), tileSide = segment.readLong(at + 16);
    return std::min(end > start ? end - start : 0, tileSide);
  };
  tile.width = side(4);
  tile.height = side(8);
  const std::size_t count = segment.readShort(36);
  for (std::size_t i = 0; i < count; ++i) {
    Jp2Coding component;
    component.stepX = std::max<int>(1, segment.readByte(38 + i * 3 + 1));
    component.stepY = std::max<int>(1, segment.readByte(38 + i * 3 + 2));
    tile.components.push_back(component);
  }
}

/// What both coding segments have from `at` on: levels, size of blocks, style, transform and maybe precincts.
void ReadCoding(metadata::ByteView segment, std::size_t at, bool ownPrecincts, Jp2Coding& coding) {
  constexpr int kLeastBlock = 2;
  coding.blockWidth = (segment.readByte(at + 1) & 15) + kLeastBlock;
  coding.blockHeight = (segment.readByte(at + 2) & 15) + kLeastBlock;
  coding.precincts.assign(std::min<std::size_t>(segment.readByte(at) + std::size_t{1}, kMaxLevels), {});
  for (std::size_t level = 0; ownPrecincts && level < coding.precincts.size(); ++level) {
    const int sizes = segment.readByte(at + 5 + level);
    coding.precincts[level] = {sizes & 15, sizes >> 4};
  }
}

void ReadSegment(std::uint32_t marker, metadata::ByteView segment, Jp2Tile& tile) {
  if (marker == kSize) ReadSize(segment, tile);
  if (marker == kCoding) {
    tile.layers = segment.readShort(4);
    for (auto& component : tile.components) ReadCoding(segment, 7, (segment.readByte(2) & 1) != 0, component);
  }
  if (marker == kComponentCoding) {
    const bool wide = tile.components.size() > 256;
    const std::size_t index = wide ? segment.readShort(2) : segment.readByte(2), at = wide ? 4 : 3;
    if (index >= tile.components.size()) throw metadata::ExifException::BadHeader;
    ReadCoding(segment, at + 1, (segment.readByte(at) & 1) != 0, tile.components[index]);
  }
}

long long Pieces(long long side, int exponent) { return (side >> std::clamp(exponent, 0, 31)) + 2; }

}  // namespace

Jp2Tile ReadJp2Tile(const metadata::ByteSource& source, std::uint64_t start) {
  Jp2Tile tile;
  auto position = start + 2;
  for (;;) {
    const auto marker = source.ReadNumber(position, 2, metadata::ByteOrder::Big);
    if (marker == kTilePart) return tile;
    const auto length = source.ReadNumber(position + 2, 2, metadata::ByteOrder::Big);
    if (length < 2) throw metadata::ExifException::BadHeader;
    const auto bytes = source.Read(position + 2, length);
    ReadSegment(marker, {bytes, metadata::ByteOrder::Big}, tile);
    position += 2 + length;
  }
}

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
