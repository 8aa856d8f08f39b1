#pragma once

#include <string>

namespace ml::bench {

/// Milliseconds that the library needs for the whole picture of a JPEG file, at one `denominator`-th (1, 2, 4 or 8) of
/// its size, to compare with.
double WholeDecode(const std::string& path, unsigned denominator = 1);

}  // namespace ml::bench
