#include "app/startup/start_files.h"

#include <sys/stat.h>

#include <algorithm>

#include "imagefiles/eos1d_test.h"
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

/// What the catalogue shows in place of `path`.
std::string Shown(const std::string& path, bool bindJpegToEos1DRaw) {
  platform::DirIndex index{std::string(platform::DirectoryOf(path))};
  if (platform::EndsWithNoCase(path, ".thm")) {
    const auto raw = platform::FindCompanion(path, ".crw", index);
    return raw.empty() ? path : raw;
  }
  if (!bindJpegToEos1DRaw || !platform::EndsWithNoCase(path, ".jpg")) return path;
  const auto raw = platform::FindCompanion(path, ".tif", index);
  return !raw.empty() && imagefiles::catalogueEos1D(raw) ? raw : path;
}

bool Holds(const std::vector<std::string>& files, const std::string& path) {
  return std::ranges::any_of(files, [&](const std::string& file) {
    return file == path || (platform::EqualsFolded(file, path) && platform::SameFile(file, path));
  });
}

}  // namespace

StartFiles CollectStartFiles(std::span<const std::string> tokens, bool bindJpegToEos1DRaw) {
  StartFiles result;
  for (const auto& token : tokens) {
    if (token.empty()) break;
    const auto path = platform::AbsolutePath(token);
    const auto kind = KindOf(path);
    if (kind == Kind::Nothing) result.missing.push_back(path);
    if (kind == Kind::Directory) {
      result.directory = platform::normaliseDirectory(path);
      result.files.clear();
      break;
    }
    if (kind != Kind::File) continue;
    auto shown = Shown(path, bindJpegToEos1DRaw);
    const auto* format = imagefiles::FindFormat(shown);
    if (format && format->openByName && !Holds(result.files, shown)) result.files.push_back(std::move(shown));
  }
  return result;
}

}  // namespace ml::app
