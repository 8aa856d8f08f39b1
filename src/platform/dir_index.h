#pragma once

#include <sys/types.h>

#include <ctime>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ml::platform {

/// The names in one directory, found without regard to case, as the makers of the companions' names expect.
/// Not for use by two threads at once.
class DirIndex {
 public:
  explicit DirIndex(std::string directory);
  const std::string& Directory() const { return directory_; }

  /// The name on disk that stands for `name` (a bare name): that spelling if there is such a file, else the one
  /// with the same spelling of the stem, else the bytewise smallest. Nothing if there is none. Reads the
  /// directory again when it changed, or when it may have changed unseen within one tick of its clock.
  std::optional<std::string> Find(std::string_view name);
  /// Find without a look at the disk: what Refresh() saw.
  std::optional<std::string> FindListed(std::string_view name) const;
  /// Reads the directory unless what is known still holds. False if it cannot be read.
  bool Refresh();

 private:
  struct Stamp {
    dev_t device = 0;
    ino_t inode = 0;
    timespec changed{};
    bool operator==(const Stamp& other) const;
  };
  static std::optional<Stamp> StampOf(const std::string& directory);
  bool Read(const Stamp& stamp);

  std::string directory_;
  std::unordered_map<std::string, std::vector<std::string>> names_;  ///< folded name: names on disk, ascending
  Stamp stamp_;
  bool trusted_ = false;
};

/// The indexes of several directories, each read when it is first asked for: for one piece of work over many
/// files, with FindListed.
class DirIndexes {
 public:
  DirIndex& Of(const std::string& directory);

 private:
  std::map<std::string, DirIndex> indexes_;
};

}  // namespace ml::platform
