#include "imagefiles/thm_file.h"

#include "platform/companion_set.h"
#include "platform/paths.h"

namespace ml::imagefiles {

std::string FindThm(const std::string& path) {
  const auto directory = platform::DirectoryOf(path);
  platform::DirIndex index(directory.empty() ? "." : std::string(directory));
  return platform::FindCompanion(path, ".thm", index);
}

}  // namespace ml::imagefiles
