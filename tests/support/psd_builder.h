#pragma once

#include <string>

#include "support/sample_photo.h"

namespace ml::test {

enum class PsdColours { Grey, Indexed, Rgb, Cmyk };
struct PsdEncoding {
  PsdColours colours = PsdColours::Rgb;
  int bits = 8;               ///< a sample; 8 or 16, indexed only 8
  bool packBits = false;      ///< else without compression
  bool extraChannel = false;  ///< one more than the colours need, all white
  std::string resources{};    ///< ready image resources
};
/// A file with no layers but the merged image. CMYK holds no black.
std::string EncodePsd(const Picture& picture, const PsdEncoding& encoding = {});

}  // namespace ml::test
