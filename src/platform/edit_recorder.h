#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace ml::platform {

/// One run of bytes that is about to be replaced in a file, perhaps with more bytes put behind its end.
struct RangeEdit {
  std::string path;
  std::uint64_t offset = 0;
  std::span<const std::byte> oldBytes, newBytes;  ///< equally long
  std::uint64_t oldSize = 0, newSize = 0;         ///< of the file
  std::uint64_t appendedHash = 0;                 ///< of what is put behind the old end
};

/// A stretch of a file that its edit may move and does not change.
struct KeptStretch {
  std::uint64_t oldOffset = 0, newOffset = 0, size = 0;
  bool operator==(const KeptStretch&) const = default;
};

/// A whole file that is about to get the content described here.
struct FileEdit {
  std::string path;
  std::uint64_t newSize = 0, newHash = 0;
  /// Ascending and apart in the old content and in the new one; empty where nobody knows of any.
  std::span<const KeptStretch> kept = {};
};

/// Told of each edit right before it happens, while the old content still stands. Never throws: that an edit
/// cannot be taken back must not prevent it.
class EditRecorder {
 public:
  virtual ~EditRecorder() = default;
  virtual void WillReplaceRange(const RangeEdit& edit) = 0;
  virtual void WillReplaceFile(const FileEdit& edit) = 0;
  /// A file that does not exist yet.
  virtual void WillCreateFile(const FileEdit& edit) = 0;
  /// Only time or permissions will change.
  virtual void WillChangeStatus(const std::string& path) = 0;
};

}  // namespace ml::platform
