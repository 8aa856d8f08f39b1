#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

/// Names of the files that the writing layer keeps beside a file for a moment. They begin with a dot, carry
/// 128 random bits and can be told from everything else, so that one left by a killed program is harmless.
namespace ml::platform {

/// A name nobody can guess, for a file that is being written.
std::string NewTemporaryName();
/// The name under which the finished temporary `name` waits while its bytes are copied over a file.
std::string CopyNameOf(std::string_view temporaryName);
/// The inverse.
std::string TemporaryNameOf(std::string_view copyName);
/// Removes what killed programs of this user left in `directory`; files still being written, and copies that
/// an interrupted overwrite needs, stay. How many were removed; never throws for a file that resists.
int RemoveStaleTemporaries(const std::string& directory, FileSystem& fileSystem = RealFileSystem());

}  // namespace ml::platform
