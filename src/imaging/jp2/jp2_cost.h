#pragma once

#include <cstdint>
#include <vector>

#include "metadata/byte_source.h"

/// Bounds on what a code stream may ask of the decoder before any of its data is looked at.
namespace ml::imaging {

/// Of all components together, four bytes each: with the picture made of them it stays below 1 GiB.
inline constexpr long long kMaxJp2Samples = 192'000'000;

/// How one component of a tile is cut up; sizes are powers of two.
struct Jp2Coding {
  struct Size {
    int width = 15;
    int height = 15;
  };
  long long stepX = 1;  ///< pixels a sample
  long long stepY = 1;
  int blockWidth = 6;
  int blockHeight = 6;
  std::vector<Size> precincts;  ///< one a resolution, the smallest first
};

struct Jp2Tile {
  long long width = 0;
  long long height = 0;
  long long layers = 1;
  std::vector<Jp2Coding> components;
};

/// What the main header of the code stream at `start` says of its tiles. Throws ExifException.
Jp2Tile ReadJp2Tile(const metadata::ByteSource& source, std::uint64_t start);

/// Whether the blocks, precincts and packets of a tile, of which the library makes lists, are few enough.
bool IsBearable(const Jp2Tile& tile);

}  // namespace ml::imaging
