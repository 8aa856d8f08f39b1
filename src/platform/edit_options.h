#pragma once

#include <functional>
#include <string>

#include "platform/data_folders.h"
#include "platform/edit_recorder.h"
#include "platform/file_system.h"

namespace ml::platform {

/// What every edit of a file is done with. Owns nothing.
struct EditOptions {
  /// Told of each change right before it happens; null if the edit is not kept for undo.
  EditRecorder* recorder = nullptr;
  std::string stateDirectory = userStateDir();
  FileSystem* fileSystem = &RealFileSystem();
  /// Null, or called with the path when all of an edit is worked out, which is then not written.
  std::function<void(const std::string& path)> insteadOfWriting = nullptr;
};

}  // namespace ml::platform
