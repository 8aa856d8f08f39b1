#pragma once

#include <string>
#include <vector>

namespace ml::platform {

/// Starts another program, which lives on by itself: `command` is its name, looked for in the path, and its arguments
/// as they stand, in whatever bytes. No shell has a hand in it. Throws UserError if it cannot be started.
void StartProgram(const std::vector<std::string>& command);

/// Hands a file or directory (full path) to the program that the desktop has for it. Throws UserError.
inline void OpenByDesktop(const std::string& path) { StartProgram({"xdg-open", path}); }

}  // namespace ml::platform
