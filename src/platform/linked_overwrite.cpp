#include "platform/linked_overwrite.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <span>
#include <vector>

#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/open_file.h"
#include "platform/overwrite_note.h"
#include "platform/paths.h"
#include "platform/temporary_name.h"

namespace ml::platform {

namespace {

using Block = std::vector<std::byte>;

void CopyRange(const OpenFile& from, OpenFile& to, std::uint64_t begin, std::uint64_t end) {
  if (begin >= end) return;
  auto at = begin;
  ReadInPieces(from, begin, end - begin, [&](auto piece) {
    to.Write(at, piece);
    at += piece.size();
  });
  if (at != end) ThrowFileError(messages::kUnableToRead, from.Label(), EIO);
}

/// The part behind the old end goes first: only there can the disk turn out to be full, and taking it away
/// again brings the old file back.
void CopyTail(const OpenFile& copy, OpenFile& target, const OverwriteNote& note) {
  CopyRange(copy, target, note.oldSize, note.newSize);
  target.Sync();
}

void CopyHead(const OpenFile& copy, OpenFile& target, const OverwriteNote& note) {
  CopyRange(copy, target, 0, std::min(note.oldSize, note.newSize));
  if (note.newSize < note.oldSize) target.Truncate(note.newSize);
  target.Sync();
}

/// The note goes last: as long as it stands, what it names is known to be ours.
void Clean(FileSystem& fileSystem, const OverwriteNote& note, const std::string& notePath) {
  OpenDirectory names(fileSystem, note.copy);
  RemoveFile(fileSystem, note.copy);
  RemoveFile(fileSystem, JoinPath(DirectoryOf(note.copy), TemporaryNameOf(FileName(note.copy))));
  names.Sync();
  RemoveFile(fileSystem, notePath);
}

/// Whether every block that the target had before is the old or the new one, but for one that may be cut in
/// two where the new ones end and the old ones begin.
bool HeadIsOldOrNew(const OpenFile& target, const OpenFile& copy, const OverwriteNote& note, std::uint64_t size) {
  bool onlyNewSoFar = true;
  bool onlyOldFromHere = false;
  Block now(kNoteBlock), fresh(kNoteBlock);
  for (std::size_t i = 0; i * kNoteBlock < size; ++i) {
    const auto at = i * kNoteBlock;
    const std::span present(now.data(), static_cast<std::size_t>(std::min<std::uint64_t>(kNoteBlock, size - at)));
    const std::span wanted(fresh.data(), copy.Read(at, std::span(fresh).first(present.size())));
    if (target.Read(at, present) != present.size()) return false;
    const bool isNew = !wanted.empty() && std::equal(wanted.begin(), wanted.end(), present.begin());
    const bool isOld = HashOf(present) == note.oldBlocks[i];
    const bool isCut = !isNew && !isOld;
    if (isCut && !onlyNewSoFar) return false;
    if (onlyOldFromHere && !isOld) return false;
    onlyOldFromHere = onlyOldFromHere || isCut;
    onlyNewSoFar = onlyNewSoFar && isNew;
  }
  return true;
}

/// Behind the old end stands a part of the new bytes, or what a disk without power left unwritten.
bool TailIsNewOrEmpty(const OpenFile& target, const OpenFile& copy, std::uint64_t begin, std::uint64_t end) {
  Block now(kNoteBlock), fresh(kNoteBlock);
  for (auto at = begin; at < end; at += kNoteBlock) {
    const std::span present(now.data(), static_cast<std::size_t>(std::min<std::uint64_t>(kNoteBlock, end - at)));
    const std::span wanted(fresh.data(), copy.Read(at, std::span(fresh).first(present.size())));
    if (target.Read(at, present) != present.size()) return false;
    const bool isEmpty = std::ranges::all_of(present, [](std::byte b) { return b == std::byte{}; });
    if (!isEmpty && !std::ranges::equal(wanted, present)) return false;
  }
  return true;
}

bool IsOursHalfDone(const OpenFile& target, const OpenFile& copy, const OverwriteNote& note) {
  const auto size = target.Size();
  if (size > std::max(note.oldSize, note.newSize) || size < std::min(note.oldSize, note.newSize)) return false;
  if (note.oldBlocks.size() != BlockCount(note.oldSize)) return false;
  return HeadIsOldOrNew(target, copy, note, std::min(size, note.oldSize)) &&
         TailIsNewOrEmpty(target, copy, note.oldSize, size);
}

/// The first free name of the form "name (recovered).ext", "name (recovered 2).ext", ..
std::string SaveBeside(FileSystem& fileSystem, const OverwriteNote& note) {
  const auto parts = SplitPath(note.target);
  for (int number = 1;; ++number) {
    std::string path(parts.directory);
    path.append(parts.stem).append(number == 1 ? " (recovered" : " (recovered " + std::to_string(number));
    path.append(")").append(parts.extension);
    if (fileSystem.RenameNoReplace(note.copy, path) == 0) return path;
    if (errno != EEXIST) ThrowFileError(messages::kUnableToRename, note.copy, errno);
  }
}

bool Exists(FileSystem& fileSystem, const std::string& path) {
  struct stat status {};
  return fileSystem.Stat(path, Links::Keep, status) == 0;
}

bool Finish(FileSystem& fileSystem, const OverwriteNote& note) {
  struct stat status {};
  if (fileSystem.Stat(note.target, Links::Keep, status) != 0 || status.st_ino != note.inode) return false;
  const auto copy = OpenRegular(fileSystem, note.copy, O_RDONLY);
  auto target = OpenRegular(fileSystem, note.target, O_RDWR);
  if (copy.Size() != note.newSize || !IsOursHalfDone(target, copy, note)) return false;
  CopyTail(copy, target, note);
  CopyHead(copy, target, note);
  return true;
}

void Recover(FileSystem& fileSystem, const std::string& notePath, OverwriteRecovery& recovery) {
  auto noteFile = OpenRegular(fileSystem, notePath, O_RDWR);
  if (!noteFile.TryLock()) return;
  const auto note = ReadOverwriteNote(noteFile);
  if (!note) return RemoveFile(fileSystem, notePath);
  if (!Exists(fileSystem, std::string(DirectoryOf(note->target)))) return;
  if (Exists(fileSystem, note->copy)) {
    if (Finish(fileSystem, *note)) {
      recovery.finished.push_back(note->target);
    } else {
      recovery.recovered.push_back(SaveBeside(fileSystem, *note));
    }
  }
  Clean(fileSystem, *note, notePath);
}

enum class TargetState { Untouched, HalfDone };

void Overwrite(FileSystem& fileSystem, const std::string& temporary, OverwriteNote& note, const std::string& notePath,
               TargetState& state) {
  auto target = OpenRegular(fileSystem, note.target, O_RDWR);
  const auto copy = OpenRegular(fileSystem, temporary, O_RDONLY);
  DescribeOldContent(target, note);
  note.newSize = copy.Size();
  const auto noteFile = WriteOverwriteNote(fileSystem, note, notePath);  // locked as long as it is open
  {
    OpenDirectory names(fileSystem, note.copy);
    if (fileSystem.Rename(temporary, note.copy) != 0) ThrowFileError(messages::kUnableToWrite, note.target, errno);
    names.Sync();
  }
  try {
    CopyTail(copy, target, note);
  } catch (const UserError&) {
    state = TargetState::HalfDone;
    target.Truncate(note.oldSize);
    state = TargetState::Untouched;
    throw;
  }
  state = TargetState::HalfDone;
  CopyHead(copy, target, note);
}

}  // namespace

void OverwriteLinkedFile(FileSystem& fileSystem, const LinkedOverwrite& work, const std::string& stateDirectory) {
  const auto temporary = AbsolutePath(work.temporary);
  OverwriteNote note{.target = AbsolutePath(work.target),
                     .copy = JoinPath(DirectoryOf(temporary), CopyNameOf(FileName(temporary)))};
  const auto notePath = JoinPath(OverwriteNoteDirectory(stateDirectory), FileName(temporary));
  TargetState state = TargetState::Untouched;
  try {
    Overwrite(fileSystem, temporary, note, notePath, state);
    Clean(fileSystem, note, notePath);
  } catch (const UserError& error) {
    if (state == TargetState::HalfDone) {
      throw UserError(messages::kFinishedAtNextStart + note.target + "\n" + error.what());
    }
    Clean(fileSystem, note, notePath);
    throw;
  }
}

OverwriteRecovery FinishInterruptedOverwrites(const std::string& stateDirectory, FileSystem& fileSystem) {
  OverwriteRecovery recovery;
  std::vector<std::string> names;
  const auto directory = OverwriteNoteDirectory(stateDirectory);
  if (fileSystem.List(directory, names) != 0) return recovery;
  for (const auto& name : names) {
    try {
      Recover(fileSystem, JoinPath(directory, name), recovery);
    } catch (const UserError& error) {
      recovery.failures.emplace_back(error.what());
    }
  }
  return recovery;
}

}  // namespace ml::platform
