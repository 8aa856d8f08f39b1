#pragma once

#include <string>
#include <vector>

#include "platform/data_folders.h"
#include "platform/file_system.h"

/// A file with several names cannot be replaced without losing them, so its bytes are overwritten, with a
/// complete copy of the new ones beside it and a note under the state directory until that is done.
namespace ml::platform {

struct LinkedOverwrite {
  std::string target;
  std::string temporary;  ///< complete, synced, beside the target, named by NewTemporaryName()
};

/// Gives `target` the bytes of `temporary`, which is gone afterwards. Throws UserError; the target is then as
/// before, unless the sentence says that the next start will finish.
void OverwriteLinkedFile(FileSystem& fileSystem, const LinkedOverwrite& work, const std::string& stateDirectory);

struct OverwriteRecovery {
  std::vector<std::string> finished;   ///< files that now have their new content, whole
  std::vector<std::string> recovered;  ///< new content put beside a file that somebody else changed meanwhile
  std::vector<std::string> failures;   ///< sentences; these are tried again at the next start
};

/// To be called once at every start, before anything is written. Finishes what a crash cut off; notes about
/// volumes that are not mounted wait, and overwrites of a running program are left to it. A file that was
/// changed since then is not touched: the new content is saved beside it under a name of its own.
/// Never throws.
OverwriteRecovery FinishInterruptedOverwrites(const std::string& stateDirectory = userStateDir(),
                                              FileSystem& fileSystem = RealFileSystem());

}  // namespace ml::platform
