#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/content_hash.h"
#include "platform/data_folders.h"
#include "platform/edit_recorder.h"
#include "platform/file_identity.h"
#include "platform/file_system.h"
#include "platform/open_file.h"
#include "platform/text.h"

namespace ml::platform {

enum class ExistingFile { Replace, Refuse };

/// When the content of a file becomes lasting that no other stood in the place of: in Commit(), or with the call of
/// SyncFileSystem() that must follow once all files of a run are made. Until then a crash of the machine may leave
/// such a file with a part of its content.
enum class NewFileLasts { AtOnce, AfterSync };

struct AtomicFileOptions {
  ExistingFile existing = ExistingFile::Replace;
  NewFileLasts newFile = NewFileLasts::AtOnce;
  /// If set, only this very file is replaced: the identity taken when its content was read.
  std::optional<FileIdentity> read = std::nullopt;
  /// Called with the path of the finished new file before it takes its place; throws UserError to refuse it.
  std::function<void(const std::string& newFile)> check = nullptr;
  /// Not owned; null if the edit is not kept for undo.
  EditRecorder* recorder = nullptr;
  /// What the new content takes over from the file that it replaces, as in FileEdit: undo need not keep it.
  std::vector<KeptStretch> kept = {};
  /// Nanoseconds since 1970, for a file that keeps the time of another one.
  std::optional<std::int64_t> modificationTime = std::nullopt;
  /// Where an overwrite of a file with several names is noted until it is done.
  std::string stateDirectory = userStateDir();
  FileSystem* fileSystem = &RealFileSystem();
};

/// The only way a whole file is made or replaced: written beside its target under a name of its own, made
/// lasting, checked, then put in place in one step. Whatever fails or is killed, the target has its old
/// content or the new one, whole. Permissions, owner (as far as allowed) and extended attributes of a
/// replaced file are kept; a new file gets 0666 less the umask. Symbolic links are followed. A file with
/// several names keeps them: it is overwritten with a complete copy at hand, and FinishInterruptedOverwrites
/// ends what a crash cut off.
///
/// All failures are UserErrors naming the file or directory. Without Commit() nothing happens.
class AtomicFile {
 public:
  /// Throws if the target is read-only, not a regular file or of the kind the options refuse, or if its
  /// directory cannot be written to.
  explicit AtomicFile(const std::string& target, AtomicFileOptions options = {});
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  /// Removes the temporary unless it took its place.
  ~AtomicFile();

  /// Appends. Not buffered: give it large pieces.
  void Write(std::span<const std::byte> bytes);
  void Write(std::string_view text) { Write(AsBytes(text)); }
  /// Bytes written so far.
  std::uint64_t Size() const noexcept { return size_; }
  /// ContentHash of them.
  std::uint64_t Hash() const noexcept { return hash_.Value(); }
  /// Once, as the last call. After a failure the target is as it was, except where the sentence says that the
  /// next start will finish.
  void Commit();

 private:
  OpenFile CreateTemporary();
  void KeepAttributes(const struct stat& old);
  void Publish(bool replaces);
  void Record(bool replaces);
  void RefuseChangedTarget() const;

  AtomicFileOptions options_;
  std::string target_;     ///< links resolved
  std::string temporary_;  ///< full path; empty once there is nothing to remove
  OpenFile file_;
  ContentHash hash_;
  std::uint64_t size_ = 0;
};

/// An AtomicFile written and committed in one go.
void ReplaceFile(const std::string& target, std::span<const std::byte> bytes, AtomicFileOptions options = {});

/// Makes lasting what was written to the file system of `directory`. Throws UserError.
void SyncFileSystem(const std::string& directory, FileSystem& fileSystem = RealFileSystem());

}  // namespace ml::platform
