#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

namespace ml::test {

/// Directories of pictures of every kind, whole and damaged, that change while a program looks at them. Knows what
/// stands in each file that nobody but itself may change.
class MonkeyFiles {
 public:
  /// Everything lies below `root`.
  explicit MonkeyFiles(std::string root);

  const std::string& Root() const { return root_; }
  /// Those to look at; the first has the most pictures, and none stands higher than two below the root.
  const std::vector<std::string>& Directories() const { return directories_; }
  /// A file that was there when this class last wrote; empty if there is none.
  std::string AnyFile(std::mt19937& random) const;

  /// Removes, adds, damages, renames a file or makes it unreadable, or moves the whole directory away or back.
  /// Tells what was done.
  std::string ChangeSomething(std::mt19937& random);
  /// Whose bytes are not those that were written here.
  std::vector<std::string> ChangedByOthers() const;

 private:
  struct Content {
    std::string bytes;
    bool readable = true;
  };

  void MakeDamaged();
  void Put(const std::string& path, const std::string& bytes);
  std::string MoveDirectory();

  std::string root_;
  std::vector<std::string> directories_;
  std::map<std::string, Content> files_;  ///< by path
  bool movedAway_ = false;
  int added_ = 0;
};

}  // namespace ml::test
