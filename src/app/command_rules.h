#pragma once

#include "app/command_state.h"

/// The rules of the command table that have a name: when a command is on. Each answers from the facts alone.
namespace ml::app::rules {

using S = const CommandState&;

inline bool Always(S) { return true; }
inline bool NotEmpty(S s) { return s.imageCount > 0; }
inline bool ListOfImages(S s) { return s.mode != ViewMode::Main && s.imageCount > 0; }
inline bool InMain(S s) { return s.mode == ViewMode::Main; }

inline bool CanGoForward(S s) {
  return InMain(s) && s.imageCount != 1 && (s.currentIndex < s.imageCount - 1 || s.wraparound);
}
inline bool CanGoBack(S s) { return InMain(s) && s.imageCount != 1 && (s.currentIndex > 0 || s.wraparound); }

inline bool CanRotate(S s) { return InMain(s) ? HaveSomething(s) : s.selectedCount > 0; }
inline bool CanPrint(S s) { return NotEmpty(s) && !(InMain(s) && s.kinds.avi); }
inline bool AnyJpeg(S s) { return s.kinds.jpeg; }
inline bool AnyRaw(S s) { return s.kinds.raw; }

/// In the tree the command means the directory chosen there, and no drive goes.
inline bool CanDelete(S s) { return !InMain(s) && s.treeHasFocus ? !s.treeAtDriveRoot : HaveSomething(s); }
/// The tree shows, and a directory is chosen there.
inline bool HasTreeDirectory(S s) { return s.mode == ViewMode::Thumbnails && s.treeHasDirectory; }
inline bool CanRenameFolder(S s) { return HasTreeDirectory(s) && !s.treeAtDriveRoot; }
/// Without an image chosen, an earlier gallery can be made anew.
inline bool CanMakeGallery(S s) { return HaveSomething(s) || (!InMain(s) && NotEmpty(s) && s.hasGallery); }

inline bool CanAddTag(S s) { return InMain(s) ? HaveTarget(s) && !s.targetTagged : s.selectedCount > 0; }
inline bool CanRemoveTag(S s) { return InMain(s) ? HaveTarget(s) && s.targetTagged : s.selectedCount > 0; }

template <int size>
bool ShowsSize(S s) {
  return s.mode != ViewMode::Main && s.thumbnailSizeMode == size;
}
template <catalogue::SortMethod method>
bool SortedBy(S s) {
  return s.sortMethod == method;
}

}  // namespace ml::app::rules
