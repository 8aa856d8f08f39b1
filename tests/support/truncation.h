#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace ml::test {

/// Calls `read` with prefixes of `file` as strings of their own: every one up to 4 KiB, the last 256, every 251st
/// between.
template <class Read>
void ForEachPrefix(std::string_view file, Read&& read) {
  constexpr std::size_t head = 4096, tail = 256, step = 251;
  for (std::size_t size = 0; size <= file.size();) {
    read(std::string(file.substr(0, size)));
    const bool dense = size < head || size + tail >= file.size();
    size += dense ? 1 : std::min(step, file.size() - tail - size);
  }
}

}  // namespace ml::test
