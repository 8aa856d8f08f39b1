#include "platform/overwrite_note.h"

#include <fcntl.h>

#include <cerrno>
#include <span>
#include <utility>

#include "platform/content_hash.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/record_line.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

constexpr char kKind[] = "overwrite 1";
constexpr char kUnfinished[] = ".part";

}  // namespace

std::string OverwriteNoteDirectory(const std::string& stateDirectory) { return JoinPath(stateDirectory, "overwrites"); }

void DescribeOldContent(const OpenFile& target, OverwriteNote& note) {
  const auto status = target.Status();
  note.inode = status.st_ino;
  note.oldSize = static_cast<std::uint64_t>(status.st_size);
  std::vector<std::byte> block(kNoteBlock);
  for (std::uint64_t at = 0; at < note.oldSize; at += kNoteBlock) {
    note.oldBlocks.push_back(HashOf(std::span(block).first(target.Read(at, block))));
  }
}

OpenFile WriteOverwriteNote(FileSystem& fileSystem, const OverwriteNote& note, const std::string& path) {
  std::vector<std::string> fields{kKind, note.target, note.copy};
  for (const auto number : {note.inode, note.oldSize, note.newSize}) fields.push_back(std::to_string(number));
  for (const auto hash : note.oldBlocks) fields.push_back(std::to_string(hash));
  const auto line = MakeRecordLine(fields);

  MakeDirectories(fileSystem, std::string(DirectoryOf(path)));
  OpenDirectory directory(fileSystem, path);
  const auto unfinished = path + kUnfinished;
  const int fd = fileSystem.Open(unfinished, O_RDWR | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
  if (fd < 0) ThrowFileError(messages::kUnableToWrite, unfinished, errno);
  OpenFile file(fileSystem, fd, unfinished);
  file.TryLock();
  file.Write(0, AsBytes(line));
  file.Sync();
  if (fileSystem.Rename(unfinished, path) != 0) ThrowFileError(messages::kUnableToWrite, path, errno);
  directory.Sync();
  return file;
}

std::optional<OverwriteNote> ReadOverwriteNote(const OpenFile& file) {
  std::vector<std::byte> bytes(static_cast<std::size_t>(file.Size()));
  bytes.resize(file.Read(0, bytes));
  const auto lines = ReadRecordLines(AsText(bytes));
  if (lines.size() != 1 || lines[0].size() < 6 || lines[0][0] != kKind) return std::nullopt;
  const auto& fields = lines[0];
  OverwriteNote note{.target = fields[1], .copy = fields[2]};
  bool valid =
      ReadNumber(fields[3], note.inode) && ReadNumber(fields[4], note.oldSize) && ReadNumber(fields[5], note.newSize);
  for (auto field = fields.begin() + 6; field != fields.end(); ++field) {
    valid = ReadNumber(*field, note.oldBlocks.emplace_back()) && valid;
  }
  return valid ? std::optional(std::move(note)) : std::nullopt;
}

}  // namespace ml::platform
