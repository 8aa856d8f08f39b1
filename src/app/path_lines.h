#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ml::app {

/// Each path behind a line end; of many only the first, so that the box stays on the screen.
inline std::string PathLines(const std::vector<std::string>& paths) {
  constexpr std::size_t kShown = 20;
  std::string lines;
  for (std::size_t i = 0; i < paths.size() && i < kShown; ++i) lines += "\n" + paths[i];
  return paths.size() > kShown ? lines + "\n..." : lines;
}

}  // namespace ml::app
