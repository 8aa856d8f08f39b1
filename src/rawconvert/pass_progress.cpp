#include "rawconvert/pass_progress.h"

#include <algorithm>

namespace ml::rawconvert {

void PassProgress::percent(int value) {
  const int whole = (passIndex_ * 100 + std::clamp(value, 0, 100)) / passCount_;
  whole_.percent(passIndex_ > passCount_ ? 100 : std::min(whole, 100));
}

}  // namespace ml::rawconvert
