#include "catalogue/ui/subdirectories.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string_view>

#include "platform/paths.h"

namespace ml::catalogue::ui {
namespace {

/// How much is spent on finding out which directories can be expanded; the rest is assumed to be.
constexpr auto kPeekTime = std::chrono::milliseconds(80);
constexpr int kPeekEntries = 2000;

struct CloseDirectory {
  void operator()(DIR* directory) const { closedir(directory); }
};
using DirectoryHandle = std::unique_ptr<DIR, CloseDirectory>;

bool IsShown(std::string_view name, bool withHidden) {
  return name != "." && name != ".." && (withHidden || !name.starts_with('.'));
}

bool IsDirectory(DIR* parent, const dirent& entry) {
  if (entry.d_type == DT_DIR) return true;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
  struct stat status {};
  return fstatat(dirfd(parent), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

/// False only if all was looked at and no directory found.
bool MayHoldDirectory(const std::string& path, bool withHidden) {
  const DirectoryHandle handle(opendir(path.c_str()));
  if (!handle) return false;
  for (int seen = 0; seen < kPeekEntries; ++seen) {
    const dirent* entry = readdir(handle.get());
    if (entry == nullptr) return false;
    if (IsShown(entry->d_name, withHidden) && IsDirectory(handle.get(), *entry)) return true;
  }
  return true;
}

}  // namespace

std::vector<Subdirectory> ListSubdirectories(const std::string& directory, bool withHidden,
                                             const std::stop_token& stop) {
  std::vector<Subdirectory> result;
  const DirectoryHandle handle(opendir(directory.c_str()));
  if (!handle) return result;
  while (const dirent* entry = readdir(handle.get())) {
    if (stop.stop_requested()) return {};
    if (IsShown(entry->d_name, withHidden) && IsDirectory(handle.get(), *entry)) result.push_back({entry->d_name});
  }
  std::ranges::sort(result, [](const auto& a, const auto& b) { return platform::CompareNoCase(a.name, b.name) < 0; });
  const auto end = std::chrono::steady_clock::now() + kPeekTime;
  for (auto& subdirectory : result) {
    if (stop.stop_requested() || std::chrono::steady_clock::now() > end) break;
    subdirectory.mayBeExpanded = MayHoldDirectory(platform::JoinPath(directory, subdirectory.name), withHidden);
  }
  return result;
}

}  // namespace ml::catalogue::ui
