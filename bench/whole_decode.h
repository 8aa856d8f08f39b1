#pragma once

#include <string>

namespace ml::bench {

/// Milliseconds that the library needs for the whole picture of a JPEG file, to compare with.
double WholeDecode(const std::string& path);

}  // namespace ml::bench
