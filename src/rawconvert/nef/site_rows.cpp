#include "rawconvert/nef/site_rows.h"

#include <algorithm>

namespace ml::rawconvert {

SiteRows::SiteRows(const NefSensor& sensor, int first, int count)
    : first_(first),
      half_(static_cast<std::size_t>(sensor.width / 2 + 1 + SiteWindow::kSites + 2)),
      samples_(half_ * 2 * static_cast<std::size_t>(count)) {
  constexpr std::uint16_t kTop = 4095;
  for (int y = first; y < first + count; ++y) {
    const auto* from = sensor.Row(y);
    auto *even = Half(y, 0), *odd = Half(y, 1);
    const int pairs = sensor.width / 2;
    for (int i = 0; i < pairs; ++i) {
      even[i] = static_cast<std::int16_t>(std::min(from[2 * i], kTop));
      odd[i] = static_cast<std::int16_t>(std::min(from[2 * i + 1], kTop));
    }
    if (sensor.width % 2 != 0) even[pairs] = static_cast<std::int16_t>(std::min(from[2 * pairs], kTop));
  }
}

std::int16_t* SiteRows::Half(int row, int parity) {
  return samples_.data() + half_ * static_cast<std::size_t>((row - first_) * 2 + parity);
}

void SiteRows::Cut(int row, int site, SiteWindow& window) const {
  for (int y = 0; y < 5; ++y) {
    for (int parity = 0; parity < 2; ++parity) {
      auto& out = window.samples[static_cast<std::size_t>(y)][static_cast<std::size_t>(parity)];
      const auto start = half_ * static_cast<std::size_t>((row - 2 + y - first_) * 2 + parity);
      std::copy_n(samples_.data() + start + (site - 1), out.size(), out.begin());
    }
  }
}

}  // namespace ml::rawconvert
