#pragma once

#include <string>
#include <unordered_map>

#include "catalogue/image_list.h"

namespace ml::catalogue {

/// The marks of a list by path, to be laid over the same files after a load. Paths compare exactly.
class RememberedMarks {
 public:
  explicit RememberedMarks(const ImageList& list);
  /// Entries that were not there keep their tags.
  void RestoreTags(ImageList& list) const;
  /// Selection and focus. Entries that were not there are not selected; a focus that is gone stays where it is.
  void RestoreSelection(ImageList& list) const;

 private:
  std::unordered_map<std::string, ItemMarks> marks_;
  std::string focusPath_;
};

}  // namespace ml::catalogue
