#pragma once

#include <algorithm>
#include <cstdint>

#include "metadata/byte_source.h"

namespace ml::metadata {

/// A stretch of a file or buffer. Readers that only locate data give this; nothing is known of what stands there.
struct FileRange {
  std::uint64_t position = 0;
  std::uint64_t size = 0;
  std::uint64_t End() const { return position + size; }
  bool operator==(const FileRange&) const = default;
};

/// As much of `range` as the source holds.
inline FileRange CutToSource(const FileRange& range, const ByteSource& source) {
  const auto position = std::min(range.position, source.Size());
  return {position, std::min(range.size, source.Size() - position)};
}

}  // namespace ml::metadata
