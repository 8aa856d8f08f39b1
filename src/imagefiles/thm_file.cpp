#include "imagefiles/thm_file.h"

#include "platform/companion_set.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::imagefiles {

std::string FindThm(const std::string& path) {
  // Cameras write one of two spellings, which need no look through the directory.
  for (const auto* extension : {".thm", ".THM"}) {
    auto candidate = platform::WithExtension(path, extension);
    if (platform::IsRegularFile(candidate)) return candidate;
  }
  const auto directory = platform::DirectoryOf(path);
  platform::DirIndex index(directory.empty() ? "." : std::string(directory));
  return platform::FindCompanion(path, ".thm", index);
}

}  // namespace ml::imagefiles
