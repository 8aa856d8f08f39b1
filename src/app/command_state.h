#pragma once

#include "app/file_kinds.h"
#include "app/view_mode.h"
#include "catalogue/image_list.h"

namespace ml::app {

/// The facts that decide which commands are on, gathered once for each update.
struct CommandState {
  ViewMode mode = ViewMode::Thumbnails;
  int imageCount = 0;
  int currentIndex = -1;  ///< image of the main display
  int focusIndex = -1;    ///< item with the keyboard focus in the list
  int selectedCount = 0;
  int taggedCount = 0;
  bool targetTagged = false;          ///< the image of Target() is tagged
  bool taggedBehindUntagged = false;  ///< some tagged entry stands behind an untagged one
  bool wraparound = false;
  bool hasParentDirectory = false;
  bool hasCustomOrder = false;  ///< a custom order is remembered
  catalogue::SortMethod sortMethod = catalogue::SortMethod::Numeric;
  bool reverseSort = false;
  int thumbnailSizeMode = 0;  ///< 0 small, 1 large, 2 extra large
  bool fullView = false;
  bool highQuality = false;
  bool blackAndWhite = false;
  bool statusBarShown = true;
  FileKinds targetKinds{};         ///< of the image of Target()
  bool targetHasSound = false;     ///< it is marked as having a sound note beside it
  FileKinds kinds{};               ///< any of: the selected images, or in the main view the image on show
  bool hasGallery = false;         ///< an earlier gallery lies beside the first image
  bool treeHasFocus = false;       ///< the keys go to the directory tree
  bool treeHasDirectory = false;   ///< one is chosen there
  bool treeAtDriveRoot = false;    ///< that is home, "/" or where something is mounted
  bool histogramShown = false;     ///< its window is open, or comes back with the mode
  bool shootingDataShown = false;  ///< its window is open
  bool flashingHighlights = false;
  bool focusPoints = false;
  bool targetFromCanonEos = false;  ///< a raw or JPEG file; not asked for in the thumbnail view
};

using Rule = bool (*)(const CommandState&);

/// The image that a command for one image acts on: the focused item in the thumbnail view, the image of the
/// main display otherwise; -1 if there is none.
int Target(const CommandState& state);
bool HaveTarget(const CommandState& state);
/// There is a target, or something is selected outside the main view.
bool HaveSomething(const CommandState& state);

}  // namespace ml::app
