#pragma once

#include <string>
#include <vector>

#include "catalogue/directory_memory.h"
#include "catalogue/image_list.h"
#include "catalogue/list_gate.h"
#include "catalogue/scan.h"
#include "catalogue/tag_file.h"
#include "platform/interaction.h"

namespace ml::catalogue {

/// What the catalogue needs to know of the settings; a copy, replaced when they change.
struct CatalogueOptions {
  bool showHidden = false;         ///< "ShowHiddenDirectories"; rules hidden files as well
  bool bindJpegToEos1DRaw = true;  ///< "BindJpegToEos1DRaw"
  bool suppressOrderFile = false;  ///< "SuppressMarrowlanternDatFile"
};

/// What the catalogue tells whoever shows it. Called on the thread that calls the catalogue.
class CatalogueObserver {
 public:
  virtual ~CatalogueObserver() = default;
  /// The directory tree moves to `directory` (no "/" at its end); it may hold no image.
  virtual void DirectoryShown(const std::string& directory) = 0;
  /// `directory` goes to the head of the recent directories.
  virtual void DirectoryVisited(const std::string& directory) = 0;
  /// The list was replaced; all thumbnails, marks and names are new.
  virtual void ListReplaced() = 0;
  /// The same entries in another order; marks travelled along.
  virtual void ListReordered() = 0;
  /// The image at `index` is to be shown, loaded anew even if it was on show; -1 clears the display. The
  /// observer sets currentIndex and currentPath.
  virtual void ShowImage(int index) = 0;
};

/// Shows one directory after the other: scan, order file, sort, tags, and the saving of order and tags when a
/// directory is left. Owns nothing but what it must remember between loads; the list belongs to the caller.
class Catalogue {
 public:
  Catalogue(ImageList& list, ListGate& gate, platform::Interaction& ask, CatalogueObserver& observer);

  void SetOptions(const CatalogueOptions& options) { options_ = options; }
  /// The directory on show, also when it holds no image; empty before the first load. No "/" at its end.
  const std::string& Directory() const { return directory_; }
  /// What the last load did not take.
  const LeftOut& NotTaken() const { return leftOut_; }

  /// Shows `directory` with `selectFile` (may be empty) as the current image. A box tells if the directory is
  /// missing or no directory; the old one then stays. The empty name does nothing.
  void LoadDirectory(const std::string& directory, const std::string& selectFile);
  /// The scan step for an explicit list; ShowImage is left to the caller. Returns how many entries the
  /// catalogue has got; 0 leaves it as it is, with its tags and order saved.
  int LoadFileList(const std::vector<std::string>& paths);
  /// "Refresh Directory": tags, selection, focus, current image and a custom order survive.
  void RefreshDirectory();

  /// The sort commands; remember the method also when the catalogue is empty.
  void SortBy(SortMethod method);
  void ToggleReverseSort();
  void MoveTaggedToStart();
  /// A drag of thumbnails: the selected entries go as a block before the entry at `position` (0..Count()), the
  /// order becomes a custom one, made by hand. Nothing happens if none is selected.
  void MoveSelectedTo(int position);

  /// "Save Custom Order": writes the order file of the directory, whatever the settings say. False, without a
  /// box, if it could not be written.
  bool SaveCustomOrder();
  /// Writes the tag file of the directory, or deletes it if nothing is tagged. False, without a box, if that
  /// failed.
  bool SaveTags();
  /// Writes the current order to `path` as a custom one. A box tells if the file cannot be written.
  void SaveCustomOrderAs(const std::string& path);
  /// Takes the order that `path` holds; false for a file that holds none: list and method stay, but not the
  /// direction that the file gives.
  bool LoadCustomOrder(const std::string& path);
  /// One full path a line for every tagged entry. A box tells if the file cannot be written.
  void SaveTagList(const std::string& path);
  /// Tags the entries that the file names. A box tells if the file cannot be read; then no tag changes.
  void LoadTagList(const std::string& path, EarlierTags earlier, TagMatch match);

  /// What leaving a directory saves: its tags and its order file. Called once more at exit. May ask. Gives the files
  /// that were not written although it looks as if they could be, as when the disk is full; they may be tried again.
  std::vector<std::string> SaveOnLeave();

 private:
  enum class Outcome { Failed, Empty, Loaded };

  Outcome Load(const std::string& directory);
  void SelectEntry(int index);
  std::vector<std::string> Filter(std::vector<std::string> images);
  void Install(std::vector<std::string> paths, Coverage coverage);
  void Clear(const std::string& directory);
  void ShowEntry(int index);
  void KeepCustomOrder();
  void ApplySort();
  bool SaveOrderOnLeave();

  ImageList& list_;
  ListGate& gate_;
  platform::Interaction& ask_;
  CatalogueObserver& observer_;
  CatalogueOptions options_;
  std::string directory_;
  DirectoryMemory memory_;
  LeftOut leftOut_;
};

}  // namespace ml::catalogue
