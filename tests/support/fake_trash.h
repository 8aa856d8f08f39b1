#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/trash.h"

namespace ml::test {

/// Moves files into a directory of the test and remembers them.
class FakeTrash final : public platform::Trash {
 public:
  explicit FakeTrash(std::string directory) : directory_(std::move(directory)) {}
  /// If set, nothing can be put into the trash.
  bool broken = false;
  std::vector<platform::TrashedFile> files;

  void Put(const std::string& path) override {
    if (broken) throw platform::UserError("Unable to move to the trash:\n" + path);
    std::filesystem::create_directories(directory_);
    const auto place = platform::JoinPath(directory_, std::to_string(files.size()));
    std::filesystem::rename(path, place);
    files.push_back({.original = path, .file = place, .info = {}});
  }
  std::vector<platform::TrashedFile> Find(const std::string& path) override {
    std::vector<platform::TrashedFile> found;
    std::ranges::copy_if(files, std::back_inserter(found), [&](const auto& file) { return file.original == path; });
    std::ranges::reverse(found);
    return found;
  }

 private:
  std::string directory_;
};

}  // namespace ml::test
