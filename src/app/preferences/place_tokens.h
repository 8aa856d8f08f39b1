#pragma once

#include <string_view>

namespace ml::app {

/// Tokens that only the window knows, for the one line about the image on show.
inline constexpr std::string_view kImageNumberToken = "@imageNumber@", kNumberOfImagesToken = "@numberOfImages@";

}  // namespace ml::app
