#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/edit_recorder.h"
#include "platform/file_identity.h"
#include "platform/file_system.h"

namespace ml::platform {

/// What tells later whether a file was touched. The inode is left out: taking back a later edit gives a file
/// a new one.
struct FileStamp {
  std::uint64_t size = 0;
  std::int64_t modified = 0;  ///< nanoseconds since 1970
  mode_t mode = 0;            ///< the twelve permission bits

  bool SameContent(const FileStamp& other) const noexcept { return size == other.size && modified == other.modified; }
  bool operator==(const FileStamp&) const = default;
};

inline FileStamp StampOf(const struct stat& status) noexcept {
  return {.size = static_cast<std::uint64_t>(status.st_size),
          .modified = ModificationTime(status),
          .mode = status.st_mode & 07777};
}

/// Nothing if there is no such file. Throws UserError if it cannot be looked at.
std::optional<FileStamp> StampOfPath(FileSystem& fileSystem, const std::string& path, Links links);

enum class EditKind { Range, File, Rename, Create, Trash, Status, Lost };

/// One edit of one file with all that is needed to take it back. Which fields count depends on the kind.
struct EditStep {
  EditKind kind = EditKind::Lost;
  std::string path;
  std::string other = {};                    ///< Rename: the new path; Lost: why it cannot be undone
  std::string oldBytes = {}, newBytes = {};  ///< Range
  std::uint64_t offset = 0;                  ///< Range: in the file; File: where its old content begins in the store
  std::uint64_t oldSize = 0, newSize = 0;    ///< Range, File, Create
  std::uint64_t oldHash = 0, newHash = 0;    ///< File, Create; Range: newHash of what was appended
  std::uint64_t inode = 0;                   ///< Rename: of the file, if the step is part of a plan
  std::vector<KeptStretch> kept = {};  ///< File: what of its old content stands in the new one; all else is stored
  std::uint64_t storedHash = 0;        ///< File: of what is in the store
  FileStamp before = {};               ///< all but Create
  /// As the batch left the file; nothing if the batch was cut off, or the file does not bear this name at its end.
  std::optional<FileStamp> after = std::nullopt;

  bool undone = false;  ///< taken back by an undo that was cut off later

  /// File: how much of the old content is in the store.
  std::uint64_t StoredSize() const noexcept;
  /// Where the file lies once the edit is done.
  const std::string& PathAfter() const noexcept { return kind == EditKind::Rename ? other : path; }
};

/// One batch of edits as it stands in the journal.
struct EditLog {
  std::string what;
  std::int64_t when = 0;  ///< seconds since 1970
  std::vector<EditStep> steps;
  bool undoing = false;    ///< an undo has begun
  std::uint64_t size = 0;  ///< bytes of the lines that were whole; where the next one goes
};

std::string HeadLine(const std::string& what, std::int64_t when);
std::string StepLine(const EditStep& step);
/// Tells how step `index` left its file.
std::string AfterLine(std::size_t index, const FileStamp& stamp);
std::string UndoingLine();
std::string UndoneLine(std::size_t index);
/// Everything up to the first line that is damaged or cut off; nothing if that is already the first.
std::optional<EditLog> ReadEditLog(std::string_view text);

}  // namespace ml::platform
