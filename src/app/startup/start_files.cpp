#include "app/startup/start_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "catalogue/viewing_jpegs.h"
#include "imagefiles/format_table.h"
#include "platform/companion_set.h"
#include "platform/dir_index.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

enum class Kind { Nothing, Directory, File, Other };

/// Devices and pipes are nothing to us: opening one could hang.
Kind KindOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return Kind::Nothing;
  if (S_ISDIR(status.st_mode)) return Kind::Directory;
  return S_ISREG(status.st_mode) ? Kind::File : Kind::Other;
}

/// Finds what the catalogue shows in place of a file. The names may be thousands: each directory is read once.
class RawFiles {
 public:
  explicit RawFiles(bool bindJpegToEos1DRaw) : bind_(bindJpegToEos1DRaw) {}
  std::string Shown(const std::string& path) {
    const auto raw = platform::EndsWithNoCase(path, ".thm") ? RawOfThm(path)
                     : bind_                                ? viewing_.RawOf(path)
                                                            : std::string();
    return raw.empty() ? path : raw;
  }

 private:
  std::string RawOfThm(const std::string& path) {
    return platform::FindCompanion(path, ".crw", indexes_.Of(std::string(platform::DirectoryOf(path))));
  }

  bool bind_;
  platform::DirIndexes indexes_;
  catalogue::ViewingJpegs viewing_;
};

/// Files in the order in which they came, each once, whatever the case of its name.
class FileSet {
 public:
  void Add(std::string path) {
    const auto [first, last] = byFoldedName_.equal_range(platform::nameFold(path));
    const bool known =
        std::any_of(first, last, [&](const auto& file) { return platform::SameFile(file.second, path); });
    if (known) return;
    byFoldedName_.emplace(platform::nameFold(path), path);
    files_.push_back(std::move(path));
  }
  std::vector<std::string> Take() { return std::move(files_); }

 private:
  std::vector<std::string> files_;
  std::unordered_multimap<std::string, std::string> byFoldedName_;
};

}  // namespace

StartFiles CollectStartFiles(std::span<const std::string> tokens, bool bindJpegToEos1DRaw) {
  StartFiles result;
  RawFiles rawFiles(bindJpegToEos1DRaw);
  FileSet files;
  for (const auto& token : tokens) {
    if (token.empty()) break;
    const auto path = platform::AbsolutePath(token);
    const auto kind = KindOf(path);
    if (kind == Kind::Nothing) result.missing.push_back(path);
    if (kind == Kind::Directory) {
      result.directory = platform::normaliseDirectory(path);
      return result;
    }
    if (kind != Kind::File) continue;
    auto shown = rawFiles.Shown(path);
    const auto* format = imagefiles::FindFormat(shown);
    if (format && format->openByName) files.Add(std::move(shown));
  }
  result.files = files.Take();
  return result;
}

}  // namespace ml::app
