#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "batch/rename_image.h"
#include "batch/rename_style.h"

namespace ml::batch {

/// A style as it reads for one image, "%u" and "%U" still in it.
struct ExpandedStyle {
  std::string text;
  bool numbered = false;  ///< the running number is in it
};

/// `number` is the image's running number, 0..kLastNumber. Never throws for what the image tells.
ExpandedStyle ExpandStyle(const RenameStyle& style, const RenameImage& image, std::int64_t number);

/// "10D", "D100" of the name of a camera.
std::string ShortModelName(std::string_view model);
/// The same without what stands before a "-": "1D".
std::string ModelNumber(std::string_view model);

}  // namespace ml::batch
