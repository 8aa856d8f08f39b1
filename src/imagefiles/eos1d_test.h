#pragma once

#include <string>

namespace ml::imagefiles {

/// Whether the catalogue takes `path` for an EOS-1D raw file: the name ends in ".tif" (any case), the file
/// has at least 1,048,576 bytes and a valid TIFF header, and tag 0x101 of its first directory is 192. False
/// for whatever cannot be read.
bool catalogueEos1D(const std::string& path);

}  // namespace ml::imagefiles
