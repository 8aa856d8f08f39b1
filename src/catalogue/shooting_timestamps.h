#pragma once

#include <functional>
#include <string>
#include <vector>

#include "imagefiles/companion_finder.h"
#include "imagefiles/image_file_options.h"
#include "platform/edit_recorder.h"
#include "platform/file_system.h"

namespace ml::catalogue {

/// What a command that sets the times of files works with. Owns nothing.
struct TimestampTools {
  const imagefiles::ImageFileOptions& options;
  imagefiles::CompanionFinder& companions;
  platform::EditRecorder* batch = nullptr;  ///< told of every change; null if it is not kept for undo
  platform::FileSystem& fileSystem = platform::RealFileSystem();
  /// Null, or called with the path in place of every change.
  std::function<void(const std::string& path)> insteadOfWriting = nullptr;
};

/// Gives each image the time at which it was shot as the time of its last change, also the ".thm" of a ".crw" and the
/// viewing JPEG of a ".tif"; with `setReadOnly` their write permissions are taken away. Files that do not exist, and
/// those whose shooting date has no six numbers, are left alone; so is the time of a file that has it already. Links
/// are followed. Gives the images for which this failed, after all others were done.
std::vector<std::string> SetTimestamps(const std::vector<std::string>& paths, bool setReadOnly,
                                       const TimestampTools& tools);

}  // namespace ml::catalogue
