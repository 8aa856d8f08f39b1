#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ml::settings {

/// What the main window remembers of itself.
struct WindowSettings {
  /// The place of the window when it is not maximised. Nothing: the toolkit decides.
  std::optional<int> left, top, right, bottom;
  int zoomed = 0;     ///< maximised when the program ended
  std::string state;  ///< bars and docks, opaque bytes of the toolkit; empty: its default

  friend bool operator==(const WindowSettings&, const WindowSettings&) = default;
};

/// Size and place of dialogs by their names, opaque bytes of the toolkit.
using DialogPlaces = std::map<std::string, std::string>;

/// The directories of the File menu, newest first.
using RecentDirectories = std::vector<std::string>;
inline constexpr std::size_t kMaxRecentDirectories = 8;

}  // namespace ml::settings
