#pragma once

namespace ml::app {

/// What the window shows; the numbers are those of the setting "ThumbnailMode".
enum class ViewMode { Main = 0, Thumbnails = 1, FilmStripSide = 2, FilmStripBelow = 3 };

/// The mode that a stored number stands for; a mode that cannot be shown becomes the thumbnail view.
constexpr ViewMode ViewModeOf(int stored) { return stored == 0 ? ViewMode::Main : ViewMode::Thumbnails; }

}  // namespace ml::app
