#pragma once

#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::metadata {

/// The head of an image resource as it stands, or a new one without a name, and the block behind it; empty if there is
/// nothing to hold. `old` is the resource in `file` that it takes the place of; empty if there is none.
std::vector<std::byte> BuildIptcResource(const IptcBlock& block, const ByteSource& file, const FileRange& old);

}  // namespace ml::metadata
