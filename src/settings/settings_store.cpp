#include "settings/settings_store.h"

#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/text.h"
#include "settings/messages.h"
#include "settings/toml_document.h"

namespace ml::settings {

namespace {

constexpr std::string_view kExe = "Exe";
/// A file above this size is none of ours.
constexpr std::uint64_t kLargestFile = std::uint64_t{16} << 20;
constexpr int kMostKeptFiles = 1000;
/// How often a save begins again because another copy of the program was faster.
constexpr int kSaveAttempts = 5;

enum class FileState { Missing, Unreadable, Broken, Good };

struct SettingsFile {
  FileState state = FileState::Missing;
  std::string content;
  std::optional<platform::FileIdentity> identity;
  std::string reason;                                                         ///< why it is broken
  std::unique_ptr<TomlDocument> document = std::make_unique<TomlDocument>();  ///< empty unless Good
};

bool IsMissing(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

void ReadContent(const std::string& path, SettingsFile& file) {
  const platform::ReadableFile in(path);
  if (in.Size() > kLargestFile) throw platform::UserError(SettingsUnreadable(path));
  const auto bytes = in.Range(0, in.Size());
  file.content = platform::AsText(bytes);
  file.identity = in.Identity();
}

SettingsFile ReadSettingsFile(const std::string& path) {
  SettingsFile file;
  if (IsMissing(path)) return file;
  try {
    ReadContent(path, file);
  } catch (const platform::UserError&) {
    file.state = FileState::Unreadable;
    return file;
  }
  try {
    file.document = std::make_unique<TomlDocument>(file.content);
    file.state = FileState::Good;
  } catch (const platform::UserError& error) {
    file.state = FileState::Broken;
    file.reason = error.what();
  }
  return file;
}

void KeepBrokenFile(const std::string& path, const std::string& content) {
  const std::string kept = path + ".bad";
  for (int i = 0; i < kMostKeptFiles; ++i) {
    const std::string name = i == 0 ? kept : kept + std::to_string(i);
    if (!IsMissing(name)) continue;
    platform::ReplaceFile(name, platform::AsBytes(content), {.existing = platform::ExistingFile::Refuse});
    return;
  }
  throw platform::UserError(SettingsNotKept(path));
}

/// Puts `content` in place of the file that was read, and of no other.
void WriteWhole(const std::string& path, const SettingsFile& file, const std::string& content) {
  platform::AtomicFileOptions options;
  options.read = file.identity;
  if (file.state == FileState::Missing) options.existing = platform::ExistingFile::Refuse;
  platform::ReplaceFile(path, platform::AsBytes(content), std::move(options));
}

}  // namespace

std::string SettingsFilePath() { return platform::JoinPath(platform::companyConfigDir(), "Marrowlantern/100.toml"); }

std::string CompanionPath() {
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
  for (int attempt = 1;; ++attempt) {
    const auto file = ReadSettingsFile(path_);
    if (file.state == FileState::Unreadable) throw platform::UserError(SettingsUnreadable(path_));
    WriteSettings(settings, loaded_, scope, *file.document);
    if (const auto exe = platform::executablePath(); scope == SaveScope::Everything && !exe.empty()) {
      file.document->PutText({kExe}, exe);
    }
    if (!file.document->Changed()) break;
    if (file.state == FileState::Broken) KeepBrokenFile(path_, file.content);
    platform::ensureDirectory(std::string(platform::DirectoryOf(path_)));
    try {
      WriteWhole(path_, file, file.document->Content());
      break;
    } catch (const platform::UserError&) {
      const bool overtaken = platform::IdentityOf(path_) != file.identity;
      if (!overtaken || attempt == kSaveAttempts) throw;
    }
  }
  loaded_ = settings;
}

}  // namespace ml::settings
