#include "imagefiles/thm_file.h"

#include "platform/companion_set.h"

namespace ml::imagefiles {

std::string FindThm(const std::string& path) { return platform::FindCompanion(path, ".thm"); }

}  // namespace ml::imagefiles
