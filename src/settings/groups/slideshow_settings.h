#pragma once

#include <cstdint>
#include <string>

namespace ml::settings {

/// Slideshow.
struct SlideshowSettings {
  int interval = 4;  ///< seconds
  std::uint8_t bottomCaption = 0;
  std::uint8_t showCaption = 1;
  std::string formatString = "@dir@@file@ [@imageNumber@ of @numberOfImages@]";  ///< caption
};

}  // namespace ml::settings
