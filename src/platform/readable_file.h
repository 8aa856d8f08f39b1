#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace ml::platform {

/// A regular file, open for reading by position. Never waits on a FIFO and never opens a device. Moves, does
/// not copy.
class ReadableFile {
 public:
  /// Throws UserError, naming the file, if it cannot be opened or is no regular file.
  explicit ReadableFile(std::string path);
  ~ReadableFile();
  ReadableFile(ReadableFile&& other) noexcept;
  ReadableFile& operator=(ReadableFile&& other) noexcept;

  const std::string& Path() const { return path_; }
  /// In bytes, when it was opened.
  std::uint64_t Size() const { return size_; }
  /// Fills `out` from `offset` on and gives the number of bytes read, less than asked only at the end of the
  /// file. Throws UserError on a read error.
  std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> out) const;

 private:
  std::string path_;
  int descriptor_ = -1;
  std::uint64_t size_ = 0;
};

}  // namespace ml::platform
