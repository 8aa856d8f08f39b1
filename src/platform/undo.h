#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/edit_step.h"
#include "platform/open_file.h"
#include "platform/trash.h"

namespace ml::platform {

struct UndoContext {
  FileSystem& fileSystem;
  Trash& trash;
  std::string stateDirectory;
  std::string storePath;  ///< the old contents of this batch; need not exist
  /// Told when all was found in order, before anything is changed.
  std::function<void()> begin;
  /// Told of each step that was taken back.
  std::function<void(std::size_t index)> undone;
};

/// Takes a batch back, last step first. Steps that never happened, or were taken back by an undo that was
/// cut off, are passed over. Throws UserError naming the file, with nothing changed, if some file is not as
/// the batch left it.
void UndoSteps(const EditLog& log, const UndoContext& context);

}  // namespace ml::platform
