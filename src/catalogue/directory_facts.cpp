#include "catalogue/directory_facts.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>
#include <string_view>
#include <vector>

#include "platform/paths.h"

namespace ml::catalogue {
namespace {

struct CloseDirectory {
  void operator()(DIR* directory) const { closedir(directory); }
};

class Measurer {
 public:
  Measurer(const std::stop_token& stop, dev_t device) : stop_(stop), device_(device) {}

  void Look(const std::string& directory, std::vector<std::string>& open) {
    const std::unique_ptr<DIR, CloseDirectory> handle(opendir(directory.c_str()));
    if (!handle) {
      ++facts.unreadable;
      return;
    }
    while (const dirent* entry = readdir(handle.get())) {
      if (stop_.stop_requested()) return;
      const std::string_view name = entry->d_name;
      if (name == "." || name == "..") continue;
      struct stat status {};
      if (fstatat(dirfd(handle.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
      if (!S_ISDIR(status.st_mode)) {
        ++facts.files;
        facts.bytes += static_cast<std::uint64_t>(status.st_size);
        continue;
      }
      ++facts.directories;
      if (status.st_dev == device_) open.push_back(platform::JoinPath(directory, name));
    }
  }

  DirectoryFacts facts;

 private:
  const std::stop_token& stop_;
  const dev_t device_;
};

}  // namespace

DirectoryFacts MeasureDirectory(const std::string& directory, const std::stop_token& stop,
                                const std::function<void(const DirectoryFacts&)>& news) {
  struct stat status {};
  if (::stat(directory.c_str(), &status) != 0) return {.unreadable = 1};
  Measurer measurer(stop, status.st_dev);
  std::vector<std::string> open{directory};
  while (!open.empty() && !stop.stop_requested()) {
    const auto next = std::move(open.back());
    open.pop_back();
    measurer.Look(next, open);
    news(measurer.facts);
  }
  return measurer.facts;
}

}  // namespace ml::catalogue
