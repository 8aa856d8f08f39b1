#pragma once

#include <string>

#include "imagefiles/companion_finder.h"
#include "platform/edit_batch.h"
#include "platform/file_system.h"
#include "platform/trash.h"

namespace ml::catalogue {

enum class DeleteTo {
  Trash,
  DeletedFolder,  ///< the subdirectory "Deleted" beside the image
  Nowhere,        ///< for good
};

/// What a command that deletes works with. Owns nothing.
struct DeleteTools {
  imagefiles::CompanionFinder& companions;
  /// Takes what is deleted, or what bears its name in "Deleted".
  platform::Trash& trash;
  platform::EditBatch* batch = nullptr;  ///< told of every step; null if it is not kept for undo
  platform::FileSystem& fileSystem = platform::RealFileSystem();
};

/// Deletes an image, or a link itself, and then its companions. Throws UserError: if the image is still there nothing
/// was touched, else some companion stayed, which the sentence names.
void DeleteImage(const std::string& path, DeleteTo to, const DeleteTools& tools);

}  // namespace ml::catalogue
