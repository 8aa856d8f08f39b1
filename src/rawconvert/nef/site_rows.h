#pragma once

#include <cstdint>
#include <vector>

#include "rawconvert/nef/nef_sensor.h"
#include "rawconvert/nef/site_window.h"

namespace ml::rawconvert {

/// Some rows of a sensor with the sites of even and of odd columns apart, and the windows that are cut out of them.
class SiteRows {
 public:
  /// `first` to `first + count`, all inside the sensor.
  SiteRows(const NefSensor& sensor, int first, int count);

  /// The run of sites from number `site` on, which counts among the columns of one parity; at least 1. What it has
  /// behind the last column is 0. Two rows above and below `row` must be here.
  void Cut(int row, int site, SiteWindow& window) const;

 private:
  std::int16_t* Half(int row, int parity);

  int first_;
  std::size_t half_;  ///< samples of a row's half, with room for a run behind its end
  std::vector<std::int16_t> samples_;
};

}  // namespace ml::rawconvert
