#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ml::test {

/// A fresh directory under /tmp, removed with all that is in it.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  /// Without a "/" at its end.
  const std::string& Path() const { return path_; }
  /// Full path of `name` in the directory.
  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }
  /// Writes a file, with the directories above it, and gives its full path.
  std::string Write(std::string_view name, std::string_view content) const;

 private:
  std::string path_;
};

/// The bytes of a file; nothing if it cannot be read.
std::optional<std::string> ReadAll(const std::string& path);

/// The folder of real camera files, or nothing on a machine without them.
std::optional<std::string> SamplesDir();

}  // namespace ml::test
