#pragma once

#include <string>

namespace ml::rawconvert {

/// Where a run puts what it makes.
struct DirectoryChoice {
  bool besideSource = true;  ///< into "CONVERTED" in the source's directory
  std::string directory{};   ///< otherwise; absolute, or from the source's directory
};

/// Full path without "/" at its end.
std::string ConversionDirectory(const std::string& source, const DirectoryChoice& choice);

/// Makes the directory with all above it. Throws UserError.
void EnsureConversionDirectory(const std::string& directory);

}  // namespace ml::rawconvert
