#include "app/view_layout.h"

#include <algorithm>
#include <cstdlib>

namespace ml::app {
namespace {

/// A stored 0 tells of no size to come back to.
int Opened(int place) { return place == 0 ? kDefaultPane : std::abs(place); }

int LimitedLower(int place, int height) {
  const int most = std::max(height - kLeastPicture - kSplitterWidth, 0);
  return std::clamp(place, -most, most);
}

}  // namespace

SplitterPlaces LimitedTo(SplitterPlaces places, int width, int height) {
  places.strip = std::min(places.strip, std::max(width - kLeastPicture, 0));
  places.lowerPane = LimitedLower(places.lowerPane, height);
  return places;
}

SplitterPlaces WithLowerPaneToggled(SplitterPlaces places) {
  places.lowerPane = places.lowerPane > 0 ? -places.lowerPane : Opened(places.lowerPane);
  return places;
}

SplitterPlaces WithPanesOpened(SplitterPlaces places) {
  places.strip = Opened(places.strip);
  places.lowerPane = Opened(places.lowerPane);
  return places;
}

SplitterPlaces WithLowerPaneAt(SplitterPlaces places, int height) {
  places.lowerPane = height > 0 ? height : -Opened(places.lowerPane);
  return places;
}

ViewLayout LayoutOf(const LayoutRequest& request) {
  const auto& at = request;
  const bool strip = at.mode == ViewMode::FilmStripSide || at.mode == ViewMode::FilmStripBelow;
  ViewLayout layout;
  layout.tree = at.mode == ViewMode::Thumbnails;
  layout.list = at.mode != ViewMode::Main;
  layout.picture = at.mode != ViewMode::Thumbnails;
  layout.controls = at.mode == ViewMode::Main && !at.fullView;
  if (layout.tree) layout.treeWidth = std::max(at.places.tree, kLeastPane);
  if (layout.controls) layout.controlsWidth = at.controlsWidth;
  const int center = std::max(at.width - layout.treeWidth - layout.controlsWidth, kLeastPane);
  if (at.mode == ViewMode::Thumbnails) {
    layout.listWidth = center;
    layout.listHeight = at.height;
    return layout;
  }
  layout.pictureWidth = center;
  if (!strip) return layout;
  const auto places = LimitedTo(at.places, at.width, at.height);
  layout.lowerPane = places.lowerPane >= 1;
  layout.lowerHeight = std::max(places.lowerPane, 0);
  if (at.mode == ViewMode::FilmStripSide) {
    layout.listWidth = std::max(places.strip, kLeastPane);
    layout.listHeight = at.height;
    layout.pictureWidth = std::max(at.width - layout.listWidth - kSplitterWidth, kLeastPicture);
  } else {
    layout.listWidth = at.width;
    layout.listHeight = at.stripHeight;
    // The strip lies between the picture and the pane, and the picture keeps its least height.
    const int room = at.height - kLeastPicture - layout.listHeight - 2 * kSplitterWidth;
    layout.lowerHeight = std::clamp(layout.lowerHeight, 0, std::max(room, 0));
    layout.lowerPane = layout.lowerHeight >= 1;
  }
  return layout;
}

}  // namespace ml::app
