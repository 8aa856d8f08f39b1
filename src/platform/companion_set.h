#pragma once

#include <string>
#include <vector>

#include "platform/dir_index.h"

namespace ml::platform {

/// Which companions a file may have beside its ".txt" and ".wav"; told by those who know its format.
struct CompanionFacts {
  bool hasThm = false;        ///< a ".thm" belongs to it
  bool hasBoundJpeg = false;  ///< a ".jpg" beside it is its viewing JPEG
};

/// An image file with all that goes with it. Full paths in the spelling on disk; empty where there is no such
/// file.
struct CompanionSet {
  std::string file, thm, txt, wav, jpg;

  /// What exists, in the order file, thm, txt, wav, jpg.
  std::vector<std::string> Paths() const;
  /// What exists, in the order in which it is deleted: file, thm, jpg, txt, wav.
  std::vector<std::string> PathsToDelete() const;
};

/// The companions of `path`. `index` must be that of the directory of `path`.
CompanionSet FindCompanions(const std::string& path, CompanionFacts facts, DirIndex& index);

/// The file beside `path` with the same stem and `extension` (lower case, with its dot), in any case; empty if
/// there is none. `index` must be that of the directory of `path`.
std::string FindCompanion(const std::string& path, std::string_view extension, DirIndex& index);
/// The same for those who are asked about one file after the other: the index of the directory that was looked into
/// last stays with the thread.
std::string FindCompanion(const std::string& path, std::string_view extension);

}  // namespace ml::platform
