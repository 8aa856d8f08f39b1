#pragma once

#include <array>
#include <cstddef>
#include <span>

/// Filters over the rows of one plane. Rows are given with `kRowMargin` samples more on either side than the result
/// has.
namespace ml::rawconvert {

inline constexpr std::size_t kRowMargin = 2;

/// The median of each 3 x 3 neighbourhood. `sorted` is room for three rows as long as the given ones.
void MedianOfNine(const std::array<const float*, 3>& rows, std::span<float> sorted, std::span<float> result);

/// Weights of the middle sample, its neighbours and theirs; with both sides they add up to 1.
using BlurWeights = std::array<float, 3>;
/// The mean of each 5 x 5 neighbourhood, weighted alike in both directions. `column` is room for one given row.
void BlurFive(const std::array<const float*, 5>& rows, const BlurWeights& weights, std::span<float> column,
              std::span<float> result);

}  // namespace ml::rawconvert
