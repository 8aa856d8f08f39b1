#pragma once

#include <stop_token>
#include <string>
#include <vector>

namespace ml::catalogue::ui {

struct Subdirectory {
  std::string name;           ///< bytes as on disk
  bool mayBeExpanded = true;  ///< false only where it is known to hold no directory
  friend bool operator==(const Subdirectory&, const Subdirectory&) = default;
};

/// The directories in `directory`, also those behind a symbolic link, sorted as the images are. Hidden ones,
/// whose name begins with a dot, only if `withHidden`. Empty if the directory cannot be read. Looks into each
/// of them only so far that a listing stays quick. May take long on a slow volume; `stop` ends it early.
std::vector<Subdirectory> ListSubdirectories(const std::string& directory, bool withHidden,
                                             const std::stop_token& stop);

}  // namespace ml::catalogue::ui
