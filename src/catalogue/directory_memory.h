#pragma once

#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "catalogue/image_list.h"

namespace ml::catalogue {

/// Whether the catalogue holds all images of its directory or only chosen ones.
enum class Coverage { WholeDirectory, SomeFiles };

/// What a directory keeps between visits: its order file and its tag file. A file that exists but could not be
/// read is neither written nor deleted in this visit. While the catalogue holds only some files of the
/// directory, what the files say of the others is kept.
class DirectoryMemory {
 public:
  /// Begins a visit of `directory` (with "/" at its end): its order file sets sort method, direction and custom
  /// order of `list` and, in custom order, arranges `paths`, which are about to become the list.
  void Enter(const std::string& directory, Coverage coverage, std::vector<std::string>& paths, ImageList& list);
  /// Ends the visit; nothing is saved.
  void Leave() { *this = {}; }

  /// With "/" at its end; empty without a visit.
  const std::string& Directory() const { return directory_; }
  Coverage Covers() const { return coverage_; }
  std::string OrderPath() const;
  std::string TagPath() const;

  /// Tags the entries that the tag file names.
  void ApplyTags(ImageList& list);
  /// Writes the tag file, or deletes it if nothing is tagged. Entries whose tag did not change in this visit are
  /// saved as the file has them now: another copy of the program may have been here too. An empty list saves
  /// nothing. False if what is on disk is not what was to be saved.
  bool SaveTags(const ImageList& list);
  /// Writes the order file, under the same conditions.
  bool SaveOrder(const ImageList& list) const;

 private:
  std::vector<std::string> TaggedHereOrByOthers(const ImageList& list, const std::vector<std::string>& inFile) const;
  std::vector<std::string> NamesHere(const std::vector<std::string>& paths) const;
  /// Whether what a file says of `name` is kept: it exists and is not in `list`.
  std::function<bool(const std::string& name)> StaysOut(const ImageList& list) const;

  std::string directory_;
  Coverage coverage_ = Coverage::WholeDirectory;
  std::unordered_set<std::string> savedTags_;  ///< paths that were tagged when the tag file was last read or written
  bool orderUnreadable_ = false;
  bool tagsUnreadable_ = false;
};

/// Writes the order of `list` to `path`, as what `method` makes of it: its entries in custom order, otherwise
/// the custom order it remembers. An empty list is not written. False if the file does not hold it now.
bool SaveOrderFile(const std::string& path, const ImageList& list, SortMethod method);

}  // namespace ml::catalogue
