#pragma once

#include <stop_token>

#include "imaging/pixel_buffer.h"
#include "platform/progress.h"

namespace ml::imaging {

/// What is known of a shot that tells how much noise it may have.
struct ShotConditions {
  int iso = 0;                 ///< 0 if it is not known
  double exposureSeconds = 0;  ///< 0 if it is not known
};

/// Smart Noise Reduction: smooths luma and, more strongly, colour where they differ no more than noise does, and leaves
/// edges. How strong the noise is, is measured in the picture, within what such a shot can have.
class CSmNR {
 public:
  /// How much of the smoothed picture there is in the result, in percent: 0 switches the filter off, 50 is low, 75
  /// normal, 95 high.
  void SetBlending(int percent) { blending_ = percent; }
  bool Active() const { return blending_ > 0; }

  /// In place, on all processors; rows without padding, one or two bytes a sample. Throws Cancelled soon after a stop
  /// request; the picture is half changed then.
  void Process(PixelBuffer& pixels, const ShotConditions& shot, platform::Progress& progress,
               const std::stop_token& stop = {}) const;

 private:
  int blending_ = 75;
};

}  // namespace ml::imaging
