#include "settings/settings_store.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "settings/messages.h"
#include "settings/toml_document.h"

namespace ml::settings {

namespace {

constexpr std::string_view kExe = "Exe";
/// A file above this size is none of ours.
constexpr std::uintmax_t kLargestFile = 16u << 20;
constexpr int kMostKeptFiles = 1000;

enum class FileState { Missing, Unreadable, Broken, Good };

struct SettingsFile {
  FileState state = FileState::Missing;
  std::string reason;                                                         ///< why it is broken
  std::unique_ptr<TomlDocument> document = std::make_unique<TomlDocument>();  ///< empty unless Good
};

SettingsFile ReadSettingsFile(const std::string& path) {
  SettingsFile file;
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) {
    file.state = errno == ENOENT || errno == ENOTDIR ? FileState::Missing : FileState::Unreadable;
    return file;
  }
  file.state = FileState::Unreadable;
  if (!S_ISREG(status.st_mode)) return file;  // opening a pipe would wait for its other end
  if (static_cast<std::uintmax_t>(status.st_size) > kLargestFile) {
    file.state = FileState::Broken;
    file.reason = kTooLarge;
    return file;
  }
  std::ifstream in(path, std::ios::binary);
  const std::string content{std::istreambuf_iterator<char>(in), {}};
  if (!in.is_open() || in.bad()) return file;
  try {
    file.document = std::make_unique<TomlDocument>(content);
    file.state = FileState::Good;
  } catch (const platform::UserError& error) {
    file.state = FileState::Broken;
    file.reason = error.what();
  }
  return file;
}

/// False with errno EEXIST if there is a file of the new name.
bool RenameToFreeName(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  struct stat status {};  // a file system that cannot refuse by itself
  if (::lstat(to.c_str(), &status) == 0) {
    errno = EEXIST;
    return false;
  }
  return std::rename(from.c_str(), to.c_str()) == 0;
}

void KeepBrokenFile(const std::string& path) {
  const std::string kept = path + ".bad";
  for (int i = 0; i < kMostKeptFiles; ++i) {
    if (RenameToFreeName(path, i == 0 ? kept : kept + std::to_string(i))) return;
    if (errno != EEXIST) break;
  }
  throw platform::UserError(SettingsNotKept(path));
}

void WriteWhole(const std::string& path, const std::string& content) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << content;
  if (!out.flush()) throw platform::UserError(SettingsUnwritable(path));
}

}  // namespace

std::string settingsFilePath() { return platform::JoinPath(platform::companyConfigDir(), "Marrowlantern/100.toml"); }

std::string companionPath() {
  for (const std::string_view name : {"Downloader/200.toml", "Downloader/100.toml"}) {
    const auto file = ReadSettingsFile(platform::JoinPath(platform::companyConfigDir(), name));
    if (auto path = file.document->Text({kExe}); path && !path->empty()) return std::move(*path);
  }
  return {};
}

SettingsStore::SettingsStore(std::string path) : path_(std::move(path)) {}

Settings SettingsStore::Load(std::string* warning) {
  const auto file = ReadSettingsFile(path_);
  if (file.state == FileState::Broken && warning != nullptr) *warning = SettingsDoNotParse(path_, file.reason);
  loaded_ = MakeDefaultSettings();
  ReadSettings(*file.document, loaded_);
  return loaded_;
}

void SettingsStore::Save(const Settings& settings, SaveScope scope) {
  const auto file = ReadSettingsFile(path_);
  if (file.state == FileState::Unreadable) throw platform::UserError(SettingsUnreadable(path_));
  WriteSettings(settings, loaded_, scope, *file.document);
  if (const auto exe = platform::executablePath(); scope == SaveScope::Everything && !exe.empty()) {
    file.document->PutText({kExe}, exe);
  }
  if (file.document->Changed()) {
    if (file.state == FileState::Broken) KeepBrokenFile(path_);
    platform::ensureDirectory(std::string(platform::DirectoryOf(path_)));
    WriteWhole(path_, file.document->Content());
  }
  loaded_ = settings;
}

}  // namespace ml::settings
