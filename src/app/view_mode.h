#pragma once

namespace ml::app {

/// What the window shows; the numbers are those of the setting "ThumbnailMode".
enum class ViewMode { Main = 0, Thumbnails = 1, FilmStripSide = 2, FilmStripBelow = 3 };

/// The mode that a stored number stands for; a number without a mode stands for the thumbnail view.
constexpr ViewMode ViewModeOf(int stored) {
  return stored >= 0 && stored <= 3 ? static_cast<ViewMode>(stored) : ViewMode::Thumbnails;
}

/// Film strip, picture and shooting data together, in one arrangement or the other.
constexpr bool IsFilmStrip(ViewMode mode) {
  return mode == ViewMode::FilmStripSide || mode == ViewMode::FilmStripBelow;
}

}  // namespace ml::app
