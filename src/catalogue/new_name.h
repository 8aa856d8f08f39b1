#pragma once

#include <optional>
#include <string>

#include "imagefiles/companion_finder.h"

namespace ml::catalogue {

/// Why the image `path` cannot be called `name` (a bare name), a sentence; nothing if it can. Nothing is changed.
std::optional<std::string> RefuseNewName(const std::string& path, const std::string& name,
                                         imagefiles::CompanionFinder& companions);

/// The same for a new folder of that name.
std::optional<std::string> RefuseFolderName(const std::string& name);

}  // namespace ml::catalogue
