#pragma once

#include <cstddef>
#include <vector>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// The XMP packet of a JPEG 2000 file: from the first element behind the packet's opening on, at most 20,480 bytes.
/// Looks for it without regard to boxes near the start of the file; empty if there is none.
std::vector<std::byte> FindXmpPacket(const ByteSource& file);

}  // namespace ml::metadata
