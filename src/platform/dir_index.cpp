#include "platform/dir_index.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::platform {

namespace {

/// A directory's time comes from a clock that ticks slowly: a change within the tick of the last one leaves no
/// trace. Whole seconds are the mark of file systems that keep the time in steps of up to two seconds.
bool MayChangeUnseen(const timespec& changed, const timespec& now) {
  constexpr std::time_t kCoarsestStep = 2;
  if (changed.tv_nsec == 0) return now.tv_sec < changed.tv_sec + kCoarsestStep;
  return std::pair(now.tv_sec, now.tv_nsec) <= std::pair(changed.tv_sec, changed.tv_nsec);
}

}  // namespace

bool DirIndex::Stamp::operator==(const Stamp& other) const {
  return device == other.device && inode == other.inode && changed.tv_sec == other.changed.tv_sec &&
         changed.tv_nsec == other.changed.tv_nsec;
}

DirIndex::DirIndex(std::string directory) : directory_(std::move(directory)) {}

std::optional<DirIndex::Stamp> DirIndex::StampOf(const std::string& directory) {
  struct stat status {};
  if (::stat(directory.c_str(), &status) != 0) return std::nullopt;
  return Stamp{status.st_dev, status.st_ino, status.st_mtim};
}

bool DirIndex::Refresh() {
  const auto stamp = StampOf(directory_);
  if (!stamp) {
    names_.clear();
    trusted_ = false;
    return false;
  }
  return (trusted_ && *stamp == stamp_) || Read(*stamp);
}

bool DirIndex::Read(const Stamp& stamp) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
  names_.clear();
  auto listing = ReadDirectory(directory_);
  for (auto& entry : listing.entries) names_[nameFold(entry.name)].push_back(std::move(entry.name));
  for (auto& [folded, names] : names_) std::ranges::sort(names);
  stamp_ = stamp;
  trusted_ = listing.complete && !MayChangeUnseen(stamp.changed, now);
  return listing.complete;
}

std::optional<std::string> DirIndex::Find(std::string_view name) {
  struct stat status {};
  if (::stat(JoinPath(directory_, name).c_str(), &status) == 0) return std::string(name);
  Refresh();
  return FindListed(name);
}

std::optional<std::string> DirIndex::FindListed(std::string_view name) const {
  const auto found = names_.find(nameFold(name));
  if (found == names_.end()) return std::nullopt;
  const auto& names = found->second;
  if (std::ranges::binary_search(names, name)) return std::string(name);
  const auto stem = SplitPath(name).stem;
  const auto sameStem = std::ranges::find_if(names, [stem](const auto& n) { return SplitPath(n).stem == stem; });
  return sameStem != names.end() ? *sameStem : names.front();
}

}  // namespace ml::platform
