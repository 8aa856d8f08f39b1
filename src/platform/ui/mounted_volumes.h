#pragma once

#include <string>
#include <vector>

namespace ml::platform::ui {

/// A place where a card, a disk or a share is mounted.
struct Volume {
  std::string path;   ///< without "/" at its end
  std::string label;  ///< what the user knows it by
};

/// The volumes that hold a user's files, sorted by path; neither "/" nor the parts of the system.
std::vector<Volume> MountedVolumes();

}  // namespace ml::platform::ui
