#pragma once

#include "app/view_mode.h"

/// Which panes a view mode shows and how large they are: plain numbers, in logical pixels.
namespace ml::app {

/// Between two panes.
inline constexpr int kSplitterWidth = 6;
/// What a moved splitter leaves of the pane at its other side.
inline constexpr int kLeastPicture = 150;
inline constexpr int kLeastPane = 120;
/// Where a splitter stands that was never moved.
inline constexpr int kDefaultPane = 200;

/// The places of the splitters as the settings keep them.
struct SplitterPlaces {
  int tree = kDefaultPane;       ///< width of the directory tree in the thumbnail view
  int strip = kDefaultPane;      ///< width of the film strip at the side
  int lowerPane = kDefaultPane;  ///< height of the pane below the picture; negative: collapsed from that height
  friend bool operator==(const SplitterPlaces&, const SplitterPlaces&) = default;
};

/// The film strip's places, limited to a client area of `width` x `height`: the strip leaves 150 of the width,
/// the lower pane leaves the upper part 150 of the height. A collapsed pane stays collapsed.
SplitterPlaces LimitedTo(SplitterPlaces places, int width, int height);
/// Collapses the lower pane, or brings it back at the size it had.
SplitterPlaces WithLowerPaneToggled(SplitterPlaces places);
/// Brings back whatever pane of the film strip is collapsed.
SplitterPlaces WithPanesOpened(SplitterPlaces places);
/// A drag left the lower pane `height` high; 0 collapses it, and it keeps its size for when it comes back.
SplitterPlaces WithLowerPaneAt(SplitterPlaces places, int height);

/// The panes of one mode. What does not show has the size 0.
struct ViewLayout {
  bool tree = false;  ///< directories and the summary below them
  bool list = false;  ///< thumbnails
  bool picture = false;
  bool controls = false;   ///< the column beside the picture
  bool lowerPane = false;  ///< the shooting data below the picture
  int treeWidth = 0, listWidth = 0, listHeight = 0, pictureWidth = 0, controlsWidth = 0, lowerHeight = 0;
  friend bool operator==(const ViewLayout&, const ViewLayout&) = default;
};

struct LayoutRequest {
  ViewMode mode = ViewMode::Thumbnails;
  bool fullView = false;
  SplitterPlaces places;
  int width = 0, height = 0;  ///< the client area
  int controlsWidth = 0;      ///< what the column wants
  int stripHeight = 0;        ///< one line of thumbnails, for the strip below the picture
};
ViewLayout LayoutOf(const LayoutRequest& request);

}  // namespace ml::app
