#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/open_file.h"

namespace ml::platform {

/// What must be known to finish an interrupted overwrite of a file with several names. The old content is
/// described block by block, so that half-done work can be told from another program's change.
struct OverwriteNote {
  std::string target, copy;  ///< full paths, links resolved
  std::uint64_t inode = 0;   ///< of the target
  std::uint64_t oldSize = 0, newSize = 0;
  std::vector<std::uint64_t> oldBlocks = {};  ///< hashes of kNoteBlock bytes each, the last one may be shorter
};

/// A page: what the system writes at once.
inline constexpr std::size_t kNoteBlock = 4096;
constexpr std::size_t BlockCount(std::uint64_t size) noexcept {
  return static_cast<std::size_t>((size + kNoteBlock - 1) / kNoteBlock);
}

std::string OverwriteNoteDirectory(const std::string& stateDirectory);
/// Sets inode, oldSize and oldBlocks. Throws UserError.
void DescribeOldContent(const OpenFile& target, OverwriteNote& note);
/// Makes the note lasting before it returns; the note is locked until the file is closed. Throws UserError.
OpenFile WriteOverwriteNote(FileSystem& fileSystem, const OverwriteNote& note, const std::string& path);
/// Nothing if the file is no whole note. Throws UserError.
std::optional<OverwriteNote> ReadOverwriteNote(const OpenFile& file);

}  // namespace ml::platform
