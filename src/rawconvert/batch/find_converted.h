#pragma once

#include <string>

#include "rawconvert/output_format.h"

namespace ml::rawconvert {

/// The file that was made of the raw file `source` in `directory`, looked for without regard to case: by the normal
/// method, else combined, else linear. Empty if there is none.
std::string FindConverted(const std::string& source, const std::string& directory, OutputFormat format);

}  // namespace ml::rawconvert
