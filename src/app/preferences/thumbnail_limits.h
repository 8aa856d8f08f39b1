#pragma once

namespace ml::app {

/// "ExtraLargeThumbnailSize" is a number that anybody may have typed; what is outside counts as the nearer end. Pixels.
inline constexpr int kSmallestThumbnail = 16, kLargestThumbnail = 2000;

}  // namespace ml::app
