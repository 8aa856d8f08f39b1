#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ml::catalogue {

enum class SortMethod { Numeric = 0, Alphabetical = 1, Timestamp = 2, FileType = 3, Custom = 4 };

/// The bits that lie over an entry.
struct ItemMarks {
  bool tagged = false;
  bool selected = false;
  friend bool operator==(const ItemMarks&, const ItemMarks&) = default;
};

/// The catalogue: the images of the directory on show, in display order, with the marks laid over them.
/// Changed only between the worker's Pause() and Resume(); marks may be changed at any time by the thread
/// that owns the list. files, marks always have the same size.
struct ImageList {
  std::vector<std::string> files;        ///< full paths; this order is the display order
  std::vector<ItemMarks> marks;          ///< parallel to files
  std::vector<std::string> customOrder;  ///< full paths of the last custom order, also of files that are gone
  SortMethod sortMethod = SortMethod::Numeric;
  bool reverseSort = false;
  int currentIndex = -1;  ///< the image of the main display, -1 if none
  std::string currentPath;
  int focusIndex = -1;              ///< the item with the keyboard focus, -1 if none
  bool orderChangedByHand = false;  ///< thumbnails were moved by dragging since the load

  bool Empty() const { return files.empty(); }
  int Count() const { return static_cast<int>(files.size()); }
  bool ValidIndex(int index) const { return index >= 0 && index < Count(); }
  /// Directory of the first entry with its "/", empty if there is none.
  std::string Directory() const;

  /// Exact comparison; -1 when absent.
  int IndexOfPath(std::string_view path) const;
  /// An exact match, else the first one by folded text; -1 when absent.
  int FindPath(std::string_view path) const;

  /// Makes the entry at `index` the current image; none if there is no such entry.
  void SetCurrent(int index);

  void SetTag(int index, bool on);
  /// Tags the entry that FindPath finds, if any.
  void SetTagByPath(std::string_view path, bool on);
  void ToggleTag(int index);

  void SelectAll();
  void SelectNone();
  void InvertSelection();
  void SelectTagged();
  void SelectOnly(int index);
  void TagSelected();
  void UntagSelected();
  void TagNone();

  int SelectedCount() const;
  int TaggedCount() const;
  /// Indices in ascending order.
  std::vector<int> SelectedIndices() const;
  std::vector<std::string> TaggedPaths() const;
  std::vector<std::string> SelectedPaths() const;

  /// Puts the entries into the order of `paths`: each path takes the first entry not yet taken that it finds
  /// (exact, else folded); entries that no path names follow in their old order. Marks, focus and the current
  /// image travel with their paths. Returns for each new index the old one, so that parallel arrays can follow.
  std::vector<int> Reorder(const std::vector<std::string>& paths);
  /// Moves the selected entries as a block before the entry at `position` (0..Count()). Returns as Reorder.
  std::vector<int> MoveSelectedTo(int position);
  /// Takes out the entries at `indices` (ascending). currentIndex and focusIndex stay on their entry, or move
  /// to the one that took its place.
  void Remove(const std::vector<int>& indices);
  /// The file `from` bears the name `to` now.
  void Rename(const std::string& from, const std::string& to);
  /// The same for many files at once: old names to new ones.
  void Rename(const std::unordered_map<std::string, std::string>& names);
  /// Replaces everything: `paths` with all marks off.
  void Assign(std::vector<std::string> paths);
};

/// "%d of %d selected", empty when nothing is selected.
std::string SelectionText(const ImageList& list);

}  // namespace ml::catalogue
