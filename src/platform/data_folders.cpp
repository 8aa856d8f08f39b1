#include "platform/data_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/errors.h"
#include "platform/file_system.h"
#include "platform/paths.h"

namespace ml::platform {

namespace {

/// A folder of the base directory scheme: the variable if it holds an absolute path, else below the home.
std::string BaseDir(const char* variable, const char* belowHome) {
  const char* value = std::getenv(variable);
  return value != nullptr && value[0] == '/' ? normaliseDirectory(value) : JoinPath(homeDir(), belowHome);
}

}  // namespace

std::string homeDir() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') return normaliseDirectory(home);
  const passwd* user = ::getpwuid(::getuid());
  return user != nullptr && user->pw_dir != nullptr ? normaliseDirectory(user->pw_dir) : "/";
}

std::string executablePath() {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : path.string();
}

std::string programDataDir() {
  if (const char* data = std::getenv("MARROWLANTERN_DATA"); data != nullptr && data[0] != '\0') {
    return normaliseDirectory(data);
  }
  return normaliseDirectory(JoinPath(DirectoryOf(executablePath()), "../share/marrowlantern"));
}

std::string userDataDir() { return JoinPath(BaseDir("XDG_DATA_HOME", ".local/share"), "marrowlantern"); }
std::string userStateDir() { return JoinPath(BaseDir("XDG_STATE_HOME", ".local/state"), "marrowlantern"); }
std::string companyConfigDir() { return JoinPath(BaseDir("XDG_CONFIG_HOME", ".config"), "Tarnwick"); }

void ensureDirectory(const std::string& directory, const std::string& wording) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  const int cause = error ? error.value() : std::filesystem::is_directory(directory, error) ? 0 : ENOTDIR;
  if (cause != 0) throw UserError(wording + directory + "\n" + ErrorText(cause));
}

}  // namespace ml::platform
