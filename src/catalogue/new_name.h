#pragma once

#include <optional>
#include <string>

#include "imagefiles/companion_finder.h"

namespace ml::catalogue {

/// Why the image `path` cannot be called `name` (a bare name), a sentence; nothing if it can. Nothing is changed.
std::optional<std::string> RefuseNewName(const std::string& path, const std::string& name,
                                         imagefiles::CompanionFinder& companions);

}  // namespace ml::catalogue
