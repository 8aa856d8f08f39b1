#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/data_folders.h"
#include "platform/edit_recorder.h"
#include "platform/file_identity.h"
#include "platform/file_system.h"

namespace ml::platform {

/// Some bytes of a file and the equally many that are to stand there.
struct Patch {
  std::uint64_t offset = 0;
  std::vector<std::byte> oldBytes, newBytes;
};

/// One small edit of a file: bytes that change and bytes that are put behind the end. The patches do not
/// overlap and lie inside the old file.
struct PatchSet {
  std::uint64_t fileSize = 0;  ///< of the file that the patches were made for
  std::vector<Patch> patches;
  std::vector<std::byte> appended = {};
  /// If set, only this very file is patched.
  std::optional<FileIdentity> read = std::nullopt;
};

struct PatchOptions {
  /// Not owned; null if the edit is not kept for undo.
  EditRecorder* recorder = nullptr;
  std::string stateDirectory = userStateDir();
  FileSystem* fileSystem = &RealFileSystem();
};

/// Widest span from the first to the last changed byte that is written in place.
inline constexpr std::uint64_t kMaxInPlaceSpan = 64 * 1024;

/// Edits a file where it stands, for a few bytes of a large one. Size and old bytes are checked first; then
/// what is appended is written and made lasting, then everything from the first to the last changed byte in
/// one write: at every moment the file reads as the old or as the new one. Wider spans go through AtomicFile.
/// Nothing is written if nothing changes. Throws UserError naming the file; the file is then as it was, or
/// the sentence says that it may be damaged (the disk refused to take the old bytes back).
void ApplyPatches(const std::string& path, const PatchSet& set, const PatchOptions& options = {});

}  // namespace ml::platform
