#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "imagefiles/companion_finder.h"
#include "platform/edit_batch.h"
#include "platform/file_system.h"
#include "platform/trash.h"

namespace ml::catalogue {

/// What becomes of the letters of a new name; directories are never touched. The numbers are those of the settings.
enum class CaseMode { Unchanged = 0, LowerExtension = 1, Lower = 2, Upper = 3 };

/// What a command that renames works with. Owns nothing.
struct RenameTools {
  imagefiles::CompanionFinder& companions;
  platform::Trash& trash;  ///< takes what stands at a new name
  /// Told of every step; null if the renaming is not kept for undo.
  platform::EditBatch* batch = nullptr;
  /// Told right after a file bears its new name, also of names that it bears for a moment only.
  std::function<void(const std::string& from, const std::string& to)> renamed = nullptr;
  platform::FileSystem& fileSystem = platform::RealFileSystem();
  /// Told of how many steps how many are done, before each; the number falls while steps are taken back.
  std::function<void(std::size_t done, std::size_t count)> progress = nullptr;
  /// Looked at before each step: a renaming that is to end throws Cancelled as it throws for a failure.
  std::stop_token stop = {};
};

/// Renames the image `source` with its companions: all get the stem of `destination` and keep their extensions, whose
/// letters, like those of the stem, follow `caseMode`. What stands at a new name goes to the trash. A link is renamed
/// itself. If one of the files cannot be renamed, those before it get their old names back. Gives the image's new path.
/// Throws UserError.
std::string RenameOne(const std::string& source, const std::string& destination, CaseMode caseMode,
                      const RenameTools& tools);

/// Renames each of `sources` to the destination of the same index; chains and swaps come out right in any order.
/// Each destination is in the directory of its source; sources may lie in several. The whole plan is noted in
/// `tools.batch`, lasting, before the first file is renamed. Gives the images' new paths. Throws UserError at the first
/// failure, or Cancelled, after which all images have their old names back; also if the plan cannot be noted.
std::vector<std::string> RenameFiles(const std::vector<std::string>& sources,
                                     const std::vector<std::string>& destinations, CaseMode caseMode,
                                     const RenameTools& tools);

}  // namespace ml::catalogue
