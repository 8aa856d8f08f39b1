#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/file_identity.h"
#include "platform/open_file.h"

namespace ml::platform {

/// A file opened for reading of ranges; nothing is read ahead. Only regular files: a pipe or device is
/// refused at once. All failures are UserErrors that name the file.
class ReadableFile {
 public:
  explicit ReadableFile(const std::string& path, FileSystem& fileSystem = RealFileSystem());

  const std::string& Path() const noexcept { return file_.Label(); }
  /// As it was when the file was opened.
  std::uint64_t Size() const noexcept { return identity_.size; }
  const FileIdentity& Identity() const noexcept { return identity_; }
  /// Fills `buffer` from `offset` on; how many bytes there were, less than wanted only at the end.
  std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) const { return file_.Read(offset, buffer); }
  /// At most `length` bytes at `offset`, fewer at the end; never allocates more than the file holds.
  std::vector<std::byte> Range(std::uint64_t offset, std::uint64_t length) const;

 private:
  OpenFile file_;
  FileIdentity identity_;
};

/// Nothing where the file is missing, not regular, or may not be read.
std::optional<ReadableFile> OpenIfReadable(const std::string& path, FileSystem& fileSystem = RealFileSystem());

/// Largest file that ReadFile takes unless told otherwise.
inline constexpr std::uint64_t kMaxWholeFile = std::uint64_t{1} << 30;

/// The whole file. Throws UserError, also if it has more than `limit` bytes.
std::vector<std::byte> ReadFile(const std::string& path, std::uint64_t limit = kMaxWholeFile,
                                FileSystem& fileSystem = RealFileSystem());

}  // namespace ml::platform
