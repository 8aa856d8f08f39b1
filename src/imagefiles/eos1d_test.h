#pragma once

#include <string>

namespace ml::imagefiles {

/// Whether the catalogue takes `path` for an EOS-1D raw file: the name ends in ".tif" (any case), the file
/// has at least 1,048,576 bytes and a valid TIFF header, and tag 0x101 of its first directory is 192. False
/// for whatever cannot be read.
bool catalogueEos1D(const std::string& path);

/// Whether the handlers take `path` for an EOS-1D raw file: wherever catalogueEos1D says so, and for any file
/// whose name ends in ".tif" and whose tag 0x100 is 192, whatever its size and camera.
bool IsEos1DRawFile(const std::string& path);

}  // namespace ml::imagefiles
