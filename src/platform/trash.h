#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace ml::platform {

/// A file in the trash.
struct TrashedFile {
  std::string original;  ///< full path it had
  std::string file;      ///< where its bytes lie now
  std::string info;      ///< the note that the trash keeps of it
};

/// Where deleted files go. A failure is told as UserError; nothing is ever deleted instead.
class Trash {
 public:
  virtual ~Trash() = default;
  /// Moves a file, or a link itself, to the trash.
  virtual void Put(const std::string& path) = 0;
  /// What came from `path` (full), latest first; empty if nothing is found.
  virtual std::vector<TrashedFile> Find(const std::string& path) = 0;
};

/// The desktop's own trash: that of the home, or of the volume a file lies on.
std::unique_ptr<Trash> MakeSystemTrash(FileSystem& fileSystem = RealFileSystem());

}  // namespace ml::platform
