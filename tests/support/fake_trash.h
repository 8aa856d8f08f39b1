#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/trash.h"
#include "support/temp_dir.h"

namespace ml::test {

/// A trash in a directory of the test, which several processes may use; file "7" has its note in "7.info".
class FakeTrash final : public platform::Trash {
 public:
  explicit FakeTrash(std::string directory) : directory_(std::move(directory)) {}
  /// If set, nothing can be put into the trash.
  bool broken = false;

  void Put(const std::string& path) override {
    if (broken) throw platform::UserError("Unable to move to the trash:\n" + path);
    std::filesystem::create_directories(directory_);
    int number = 0;
    while (std::filesystem::exists(Place(number) + ".info")) ++number;
    std::ofstream(Place(number) + ".info") << path;
    std::filesystem::rename(path, Place(number));
  }
  std::vector<platform::TrashedFile> Find(const std::string& path) override {
    std::vector<platform::TrashedFile> found;
    for (int i = 0; std::filesystem::exists(Place(i) + ".info"); ++i) {
      if (ReadAll(Place(i) + ".info") != path || !std::filesystem::exists(Place(i))) continue;
      found.insert(found.begin(), {.original = path, .file = Place(i), .info = {}});
    }
    return found;
  }

 private:
  std::string Place(int number) const { return directory_ + "/" + std::to_string(number); }

  std::string directory_;
};

}  // namespace ml::test
