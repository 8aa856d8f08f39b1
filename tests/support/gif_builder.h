#pragma once

#include <string>
#include <vector>

#include "support/sample_photo.h"

namespace ml::test {

/// A GIF of one picture or, with several of the same size, an animation. All use the colours of the first.
std::string EncodeGif(const std::vector<Picture>& frames);

}  // namespace ml::test
