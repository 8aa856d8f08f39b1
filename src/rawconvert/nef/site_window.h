#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ml::rawconvert {

/// A run of sites of one row that are two columns apart, so of one colour, with all sites up to two rows and columns
/// away. Sites of even and of odd columns stand apart: what lies in one direction of each site of the run then stands
/// in a row and is worked on as a vector. Samples are 0..4095.
struct SiteWindow {
  static constexpr int kSites = 128;
  /// [row, from two above][column parity]: from the site before the run to the one behind it.
  std::array<std::array<std::array<std::int16_t, kSites + 2>, 2>, 5> samples;

  /// The neighbour `Y` rows below and `X` columns right of each site of a run that begins in a column of `Parity`.
  template <int Parity, int Y, int X>
  const std::int16_t* At() const {
    constexpr int column = Parity + X;
    return samples[Y + 2][column & 1].data() + ((column >> 1) + 1);
  }
};

/// A value for each site of a run.
using SiteRow = std::array<std::int16_t, SiteWindow::kSites>;

}  // namespace ml::rawconvert
