#pragma once

#include <string>

/// Where the program's own files lie. Paths end without "/"; none of the functions makes a directory.
namespace ml::platform {

/// Templates, profiles, help and icons: $MARROWLANTERN_DATA, else <executable>/../share/marrowlantern.
std::string programDataDir();
/// $XDG_DATA_HOME/marrowlantern
std::string userDataDir();
/// $XDG_STATE_HOME/marrowlantern
std::string userStateDir();
/// $XDG_CONFIG_HOME/Tarnwick, the folder of this program's and its companion's settings.
std::string companyConfigDir();
/// $HOME, else the home of the user database, else "/".
std::string homeDir();
/// Full path of the running program; empty if the system does not tell.
std::string executablePath();

/// Makes `directory` and what is missing above it. Throws UserError with `wording`, the path and the cause
/// on a line of its own if it cannot.
void ensureDirectory(const std::string& directory, const std::string& wording = "Unable to create directory:\n");

}  // namespace ml::platform
