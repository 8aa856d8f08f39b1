#include "platform/revert_step.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <optional>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/file_identity.h"
#include "platform/file_status.h"
#include "platform/in_place_patch.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

std::vector<std::byte> ToBytes(const std::string& text) {
  const auto bytes = AsBytes(text);
  return {bytes.begin(), bytes.end()};
}

/// Takes back the bytes of a file by `write`. Permissions stay as they are now, because an edit notes them
/// while they are lifted; the time of now stays too where `write` fails.
template <class Write>
void Rewrite(const EditStep& step, FileSystem& fileSystem, Write&& write) {
  FileStatusGuard guard(step.path, ModificationTimePolicy::Restore, fileSystem);
  if (!guard.MakeWritable()) throw UserError(messages::kReadOnly + step.path);
  guard.Wrote();
  write();
  guard.Restore();
  SetModificationTime(step.path, step.before.modified, fileSystem);
}

void RevertRange(const EditStep& step, const UndoContext& context) {
  auto now = ReadableFile(step.path, context.fileSystem).Range(step.offset, step.oldBytes.size());
  const auto old = OldBytes(step);
  if (now != old) {
    if (!IsNewBytes(step, now)) RefuseChanged(step.path);
    ApplyPatches(
        step.path,
        {.fileSize = step.newSize, .patches = {{.offset = step.offset, .oldBytes = std::move(now), .newBytes = old}}},
        {.stateDirectory = context.stateDirectory, .fileSystem = &context.fileSystem});
  }
  if (step.newSize == step.oldSize) return;
  auto target = OpenRegular(context.fileSystem, step.path, O_RDWR);
  target.Truncate(step.oldSize);
  target.Sync();
}

AtomicFileOptions Writing(const FileStamp& stamp, const UndoContext& context) {
  return {
      .modificationTime = stamp.modified, .stateDirectory = context.stateDirectory, .fileSystem = &context.fileSystem};
}

using Take = std::function<void(std::span<std::byte> piece)>;

/// All of a stretch, or a UserError.
void ReadWhole(const OpenFile& from, std::uint64_t begin, std::uint64_t length, const Take& take) {
  if (ReadInPieces(from, begin, length, take) != length) ThrowFileError(messages::kUnableToRead, from.Label(), EIO);
}

/// The old content from the file as it is `now` and from the store.
void ReadOldContent(const EditStep& step, const OpenFile& now, const UndoContext& context, const Take& take) {
  std::optional<OpenFile> store;
  if (step.StoredSize() > 0) store.emplace(OpenRegular(context.fileSystem, context.storePath, O_RDONLY));
  auto stored = step.offset;
  std::uint64_t at = 0;
  const auto fromStore = [&](std::uint64_t end) {
    if (end > at) ReadWhole(*store, stored, end - at, take);
    stored += end - at;
  };
  for (const auto& kept : step.kept) {
    fromStore(kept.oldOffset);
    ReadWhole(now, kept.newOffset, kept.size, take);
    at = kept.oldOffset + kept.size;
  }
  fromStore(step.oldSize);
}

/// Another program may have come by since all steps were looked at.
void RevertFile(const EditStep& step, const UndoContext& context) {
  const auto now = OpenRegular(context.fileSystem, step.path, O_RDONLY);
  const auto identity = IdentityOf(now.Status());
  const auto nowHash = HashRange(now, 0, identity.size);
  if (identity.size == step.oldSize && nowHash == step.oldHash) return;  // by an undo that was cut off
  if (identity.size != step.newSize || nowHash != step.newHash) RefuseChanged(step.path);
  auto writing = Writing(step.before, context);
  writing.read = identity;
  AtomicFile file(step.path, writing);
  ReadOldContent(step, now, context, [&](auto piece) { file.Write(piece); });
  if (file.Hash() != step.oldHash) throw UserError(messages::kOldContentLost + step.path);
  file.Commit();
}

/// For a file that its edit moved to another volume.
void CopyBack(const std::string& from, const std::string& to, const UndoContext& context) {
  auto& fileSystem = context.fileSystem;
  const auto stamp = StampOfPath(fileSystem, from, Links::Follow);
  if (!stamp) RefuseChanged(from);
  auto options = Writing(*stamp, context);
  options.existing = ExistingFile::Refuse;
  AtomicFile file(to, options);
  ReadWhole(OpenRegular(fileSystem, from, O_RDONLY), 0, stamp->size, [&](auto piece) { file.Write(piece); });
  file.Commit();
  RestoreFileStatus(to, {.modified = stamp->modified, .mode = stamp->mode}, ModificationTimePolicy::Restore,
                    fileSystem);
  RemoveFile(fileSystem, from);
}

enum class Lasting { AtOnce, Later };

/// Back under the old name, never over a file that stands there.
void MoveBack(const std::string& from, const std::string& to, Lasting lasting, const UndoContext& context) {
  auto& fileSystem = context.fileSystem;
  // Names that differ in case only, where case is ignored, are one file.
  const bool sameFile = StampOfPath(fileSystem, to, Links::Keep) && SameFile(from, to);
  const int result = sameFile ? fileSystem.Rename(from, to) : fileSystem.RenameNoReplace(from, to);
  if (result == 0 && lasting == Lasting::AtOnce) OpenDirectory(fileSystem, to).Sync();
  if (result == 0) return;
  if (errno != EXDEV) ThrowFileError(messages::kUnableToRename, from, errno);
  CopyBack(from, to, context);
}

void RevertTrash(const EditStep& step, const UndoContext& context) {
  const auto trashed = FindInTrash(step, context);
  if (!trashed) RefuseChanged(step.path);
  MoveBack(trashed->file, step.path, Lasting::AtOnce, context);
  if (!trashed->info.empty()) RemoveFile(context.fileSystem, trashed->info);
}

}  // namespace

void RevertStep(const EditStep& step, const UndoContext& context) {
  switch (step.kind) {
    case EditKind::Range:
      return Rewrite(step, context.fileSystem, [&] { RevertRange(step, context); });
    case EditKind::File:
      return Rewrite(step, context.fileSystem, [&] { RevertFile(step, context); });
    case EditKind::Rename:
      return MoveBack(step.other, step.path, step.inode != 0 ? Lasting::Later : Lasting::AtOnce, context);
    case EditKind::Create:
      return context.trash.Put(step.path);
    case EditKind::Trash:
      return RevertTrash(step, context);
    case EditKind::Status:
      return RestoreFileStatus(step.path, {.modified = step.before.modified, .mode = step.before.mode},
                               ModificationTimePolicy::Restore, context.fileSystem);
    case EditKind::Lost:
      return;
  }
}

std::uint64_t HashRange(const OpenFile& file, std::uint64_t begin, std::uint64_t length) {
  ContentHash hash;
  ReadInPieces(file, begin, length, [&](auto piece) { hash.Add(piece); });
  return hash.Value();
}

std::vector<std::byte> OldBytes(const EditStep& step) { return ToBytes(step.oldBytes); }

bool IsNewBytes(const EditStep& step, std::span<const std::byte> now) {
  const auto fresh = ToBytes(step.newBytes);
  const auto old = ToBytes(step.oldBytes);
  if (now.size() != fresh.size()) return false;
  const auto same = static_cast<std::size_t>(std::ranges::mismatch(now, fresh).in1 - now.begin());
  return same == now.size() || (!step.after && std::ranges::equal(now.subspan(same), std::span(old).subspan(same)));
}

std::optional<TrashedFile> FindInTrash(const EditStep& step, const UndoContext& context) {
  for (auto& file : context.trash.Find(step.path)) {
    const auto stamp = StampOfPath(context.fileSystem, file.file, Links::Keep);
    if (stamp && stamp->SameContent(step.before)) return std::move(file);
  }
  return std::nullopt;
}

void RefuseChanged(const std::string& path) { throw UserError(messages::kChangedSince + path); }

}  // namespace ml::platform
