#pragma once

#include <stop_token>

#include "platform/progress.h"

namespace ml::rawconvert {

/// Who watches a development. Its percentages are told on the developing thread; after a stop request it ends with
/// platform::Cancelled within a second.
struct DevelopWatch {
  platform::Progress* progress = nullptr;
  std::stop_token stop = {};
};

}  // namespace ml::rawconvert
