#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/edit_options.h"
#include "platform/file_identity.h"

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

/// What is written in place lies in one page of the file: a longer write may be cut off at the border of a page, by a
/// kill as by the loss of power.
inline constexpr std::uint64_t kInPlacePage = 4096;

/// Edits a file where it stands, for a few bytes of a large one. Size and old bytes are checked first; then
/// what is appended is written and made lasting, then everything from the first to the last changed byte in
/// one write: at every moment the file reads as the old or as the new one. Spans that reach into another page go
/// through AtomicFile. Nothing is written if nothing changes. Throws UserError naming the file; the file is then as it
/// was, or the sentence says that it may be damaged (the disk refused to take the old bytes back).
void ApplyPatches(const std::string& path, const PatchSet& set, const EditOptions& options = {});

}  // namespace ml::platform
