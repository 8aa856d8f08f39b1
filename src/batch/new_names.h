#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "batch/rename_image.h"
#include "batch/rename_style.h"

namespace ml::batch {

/// The names in a directory that take no part in the renaming: they block numbers, and must not be hit.
/// `directory` ends in "/" or is empty; `sources` are bare names. Empty if the directory cannot be read.
std::vector<std::string> OtherFiles(const std::string& directory, const std::vector<RenameImage>& sources);

/// One row of the list of old and new names.
struct NewName {
  std::string oldName, newName;
  std::size_t given = 0;  ///< index among the images as they were given
  bool isCanonRaw = false;
  bool conflict = false;  ///< a file that takes no part bears the new name
};

struct NewNames {
  std::vector<NewName> rows;     ///< in the order in which they were numbered
  std::int64_t nextCounter = 0;  ///< the first number to go on with another time
  bool HasConflict() const;
};

/// The new name, without its extension, of `images[index]` as the style says, `images` being in their sorted order.
/// The tokens "%u" and "%U" stay; they are for BuildNewNames. Throws UserError for a bad index.
std::string GetNewName(std::span<const RenameImage> images, std::size_t index, const RenameStyle& style);

/// All new names: sorts, expands, finds the numbers of "%u" and "%U", turns the letters as told, looks for conflicts
/// with `otherFiles`. Every name ends in the extension of its image. Whether the names are allowed is CheckNewNames' to
/// say. Does not touch the disk.
NewNames BuildNewNames(const std::vector<RenameImage>& images, const RenameStyle& style,
                       const std::vector<std::string>& otherFiles);

/// "old --> new", a line each.
std::string PreviewText(const NewNames& names);

}  // namespace ml::batch
