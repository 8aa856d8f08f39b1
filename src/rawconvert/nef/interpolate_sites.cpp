#include "rawconvert/nef/interpolate_sites.h"

#include <algorithm>
#include <utility>

namespace ml::rawconvert {
namespace {

constexpr std::size_t kSites = SiteWindow::kSites;
constexpr std::size_t kDirections = 8;

/// Rows down and columns right of a direction: N, E, S, W, NE, SE, SW, NW.
constexpr std::array<std::array<int, 2>, kDirections> kStep = {
    {{-1, 0}, {0, 1}, {1, 0}, {0, -1}, {-1, 1}, {1, 1}, {1, -1}, {-1, -1}}};

enum class Sensor { Green, RedBlue, FourColours };

inline std::int16_t Distance(std::int16_t a, std::int16_t b) {
  return static_cast<std::int16_t>(std::max(a, b) - std::min(a, b));
}

/// Twice the gradient of direction `D` at site `k`, so that half weights stay whole: at most 8 x 4095.
template <int Parity, std::size_t D>
[[gnu::always_inline]] inline std::int16_t Gradient(const SiteWindow& w, std::size_t k) {
  constexpr int Y = kStep[D][0], X = kStep[D][1];
  const auto difference = [&]<int Y1, int X1, int Y2, int X2>() {
    return Distance(w.At<Parity, Y1, X1>()[k], w.At<Parity, Y2, X2>()[k]);
  };
  const int centre =
      difference.template operator()<Y, X, -Y, -X>() + difference.template operator()<2 * Y, 2 * X, 0, 0>();
  if constexpr (Y != 0 && X != 0) {
    return static_cast<std::int16_t>(2 * (centre + difference.template operator()<2 * Y, X, 0, -X>() +
                                          difference.template operator()<Y, 2 * X, -Y, 0>()));
  } else {
    return static_cast<std::int16_t>(2 * centre + difference.template operator()<Y + X, X + Y, -Y + X, -X + Y>() +
                                     difference.template operator()<Y - X, X - Y, -Y - X, -X - Y>() +
                                     difference.template operator()<2 * Y + X, 2 * X + Y, X, Y>() +
                                     difference.template operator()<2 * Y - X, 2 * X - Y, -X, -Y>());
  }
}

/// For each direction -1 where its gradient is below the smallest and half of the largest one together, else 0.
using Smooth = std::array<SiteRow, kDirections>;

template <int Parity>
void FindSmooth(const SiteWindow& window, Smooth& smooth, SiteRow& count) {
  Smooth gradients;
  [&]<std::size_t... D>(std::index_sequence<D...>) {
    for (std::size_t k = 0; k < kSites; ++k) ((gradients[D][k] = Gradient<Parity, D>(window, k)), ...);
  }(std::make_index_sequence<kDirections>());
  for (std::size_t k = 0; k < kSites; ++k) {
    std::int16_t low = gradients[0][k], high = low;
    for (std::size_t d = 1; d < kDirections; ++d) {
      low = std::min(low, gradients[d][k]);
      high = std::max(high, gradients[d][k]);
    }
    const auto half = static_cast<std::int16_t>((high >> 1) + (high & 1));
    std::int16_t n = 0;
    for (std::size_t d = 0; d < kDirections; ++d) {
      const auto above = static_cast<std::int16_t>(gradients[d][k] - low);
      smooth[d][k] = above < half ? -1 : 0;
      n = static_cast<std::int16_t>(n - smooth[d][k]);
    }
    count[k] = n;
  }
}

/// Four times the value of each colour in a direction, less four times that of the site's own.
struct Pull {
  int beside, upright, corner;
};

template <int Parity, Sensor S, std::size_t D>
[[gnu::always_inline]] inline Pull PullOf(const SiteWindow& w, std::size_t k) {
  constexpr int Y = kStep[D][0], X = kStep[D][1];
  const auto at = [&]<int Y1, int X1>() { return static_cast<int>(w.At<Parity, Y1, X1>()[k]); };
  const int own = 2 * (at.template operator()<2 * Y, 2 * X>() + at.template operator()<0, 0>());
  if constexpr (Y != 0 && X != 0) {
    const int corner = 4 * at.template operator()<Y, X>();
    const int beside = at.template operator()<0, X>() + at.template operator()<2 * Y, X>();
    const int upright = at.template operator()<Y, 0>() + at.template operator()<Y, 2 * X>();
    if constexpr (S == Sensor::Green) return {2 * beside - corner, 2 * upright - corner, 0};
    if constexpr (S == Sensor::RedBlue) return {beside + upright - own, 0, corner - own};
    return {2 * beside - own, 2 * upright - own, corner - own};
  } else {
    const int along = 4 * at.template operator()<Y, X>();
    const int across = at.template operator()<2 * Y + X, 2 * X + Y>() + at.template operator()<2 * Y - X, 2 * X - Y>() +
                       at.template operator()<X, Y>() + at.template operator()<-X, -Y>();
    const int corner = 2 * (at.template operator()<Y + X, X + Y>() + at.template operator()<Y - X, X - Y>());
    if constexpr (S == Sensor::RedBlue) return {along - own, 0, corner - own};
    return {(Y == 0 ? along : across) - own, (Y == 0 ? across : along) - own, corner - own};
  }
}

using Sums = std::array<int, kSites>;

template <int Parity, Sensor S, std::size_t D>
void AddDirection(const SiteWindow& window, const Smooth& smooth, Sums& beside, Sums& upright, Sums& corner) {
  for (std::size_t k = 0; k < kSites; ++k) {
    const auto pull = PullOf<Parity, S, D>(window, k);
    const int mask = smooth[D][k];
    beside[k] += pull.beside & mask;
    if constexpr (S != Sensor::RedBlue) upright[k] += pull.upright & mask;
    if constexpr (S != Sensor::Green) corner[k] += pull.corner & mask;
  }
}

/// The site's value and the average pull; where no direction counts, the `plain` average (four times it).
inline std::int16_t Estimate(int own, int sum, int count, int plain) {
  const float pull = static_cast<float>(sum) * (0.25F / static_cast<float>(std::max(count, 1)));
  const float value = count == 0 ? static_cast<float>(plain) * 0.25F : static_cast<float>(own) + pull;
  return static_cast<std::int16_t>(std::max(value, 0.0F) + 0.5F);
}

template <Sensor S, int Parity>
void Interpolate(const SiteWindow& window, SiteColours& out) {
  Smooth smooth;
  SiteRow count;
  FindSmooth<Parity>(window, smooth, count);
  Sums beside{}, upright{}, corner{};
  [&]<std::size_t... D>(std::index_sequence<D...>) {
    (AddDirection<Parity, S, D>(window, smooth, beside, upright, corner), ...);
  }(std::make_index_sequence<kDirections>());
  const auto* own = window.At<Parity, 0, 0>();
  const auto* left = window.At<Parity, 0, -1>();
  const auto* right = window.At<Parity, 0, 1>();
  const auto* above = window.At<Parity, -1, 0>();
  const auto* below = window.At<Parity, 1, 0>();
  for (std::size_t k = 0; k < kSites; ++k) {
    const int row = left[k] + right[k], column = above[k] + below[k];
    out.own[k] = own[k];
    out.beside[k] = Estimate(own[k], beside[k], count[k], S == Sensor::RedBlue ? row + column : 2 * row);
    if constexpr (S != Sensor::RedBlue) out.upright[k] = Estimate(own[k], upright[k], count[k], 2 * column);
  }
  if constexpr (S == Sensor::Green) return;
  for (std::size_t k = 0; k < kSites; ++k) {
    const int corners = window.At<Parity, -1, -1>()[k] + window.At<Parity, -1, 1>()[k] + window.At<Parity, 1, -1>()[k] +
                        window.At<Parity, 1, 1>()[k];
    out.corner[k] = Estimate(own[k], corner[k], count[k], corners);
  }
}

template <Sensor S>
void InterpolateOn(const SiteWindow& window, int parity, SiteColours& out) {
  parity == 0 ? Interpolate<S, 0>(window, out) : Interpolate<S, 1>(window, out);
}

}  // namespace

void InterpolateGreenSites(const SiteWindow& window, int parity, SiteColours& out) {
  InterpolateOn<Sensor::Green>(window, parity, out);
}

void InterpolateRedBlueSites(const SiteWindow& window, int parity, SiteColours& out) {
  InterpolateOn<Sensor::RedBlue>(window, parity, out);
}

void InterpolateFourColourSites(const SiteWindow& window, int parity, SiteColours& out) {
  InterpolateOn<Sensor::FourColours>(window, parity, out);
}

}  // namespace ml::rawconvert
