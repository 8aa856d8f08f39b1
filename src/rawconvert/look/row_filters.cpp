#include "rawconvert/look/row_filters.h"

#include <algorithm>

namespace ml::rawconvert {
namespace {

float Middle(float a, float b, float c) { return std::max(std::min(a, b), std::min(std::max(a, b), c)); }
float Least(float a, float b, float c) { return std::min(std::min(a, b), c); }
float Most(float a, float b, float c) { return std::max(std::max(a, b), c); }

}  // namespace

void MedianOfNine(const std::array<const float*, 3>& rows, std::span<float> sorted, std::span<float> result) {
  const std::size_t given = sorted.size() / 3;
  float* const low = sorted.data();
  float* const mid = low + given;
  float* const high = mid + given;
  for (std::size_t x = 0; x < given; ++x) {
    const float a = rows[0][x], b = rows[1][x], c = rows[2][x];
    low[x] = Least(a, b, c);
    mid[x] = Middle(a, b, c);
    high[x] = Most(a, b, c);
  }
  for (std::size_t x = 0; x < result.size(); ++x) {
    const std::size_t at = x + kRowMargin;
    result[x] = Middle(Most(low[at - 1], low[at], low[at + 1]), Middle(mid[at - 1], mid[at], mid[at + 1]),
                       Least(high[at - 1], high[at], high[at + 1]));
  }
}

void BlurFive(const std::array<const float*, 5>& rows, const BlurWeights& weights, std::span<float> column,
              std::span<float> result) {
  const auto [centre, near, far] = weights;
  for (std::size_t x = 0; x < column.size(); ++x) {
    column[x] = centre * rows[2][x] + near * (rows[1][x] + rows[3][x]) + far * (rows[0][x] + rows[4][x]);
  }
  for (std::size_t x = 0; x < result.size(); ++x) {
    result[x] = centre * column[x + 2] + near * (column[x + 1] + column[x + 3]) + far * (column[x] + column[x + 4]);
  }
}

}  // namespace ml::rawconvert
