#include "platform/in_place_patch.h"

#include <fcntl.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <span>
#include <utility>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/content_hash.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/messages.h"
#include "platform/open_file.h"

namespace ml::platform {

namespace {

/// The bytes from the first to the last changed one, as they are and as they shall be.
struct Span {
  std::uint64_t begin = 0;
  std::vector<std::byte> oldBytes, newBytes;
};

/// First changed byte and one behind the last; equal if nothing changes.
struct Bounds {
  std::uint64_t begin = 0, end = 0;
};

Bounds ChangedBounds(const std::vector<Patch>& patches) {
  Bounds bounds{.begin = UINT64_MAX, .end = 0};
  for (const auto& patch : patches) {
    assert(patch.oldBytes.size() == patch.newBytes.size());
    for (std::size_t i = 0; i < patch.newBytes.size(); ++i) {
      if (patch.oldBytes[i] == patch.newBytes[i]) continue;
      bounds.begin = std::min(bounds.begin, patch.offset + i);
      bounds.end = std::max(bounds.end, patch.offset + i + 1);
    }
  }
  return bounds.end == 0 ? Bounds{} : bounds;
}

/// Puts into `bytes`, which begin at `begin` of the file, what the patches say of them.
void Overlay(const std::vector<Patch>& patches, std::uint64_t begin, std::span<std::byte> bytes) {
  for (const auto& patch : patches) {
    const auto from = std::max(patch.offset, begin);
    const auto to = std::min(patch.offset + patch.newBytes.size(), begin + bytes.size());
    if (from >= to) continue;
    const auto part = std::span(patch.newBytes).subspan(from - patch.offset, to - from);
    std::ranges::copy(part, bytes.subspan(from - begin).begin());
  }
}

void CheckUnchanged(const OpenFile& file, const PatchSet& set) {
  const auto identity = IdentityOf(file.Status());
  bool same = identity.size == set.fileSize && (!set.read || *set.read == identity);
  for (const auto& patch : set.patches) {
    std::vector<std::byte> now(patch.oldBytes.size());
    assert(patch.offset + now.size() <= set.fileSize);
    same = same && file.Read(patch.offset, now) == now.size() && now == patch.oldBytes;
  }
  if (!same) throw UserError(messages::kChangedMeanwhile + file.Label());
}

/// All of the file that stays.
std::vector<KeptStretch> BetweenPatches(const PatchSet& set) {
  std::vector<std::pair<std::uint64_t, std::uint64_t>> patched;  // from, to
  patched.reserve(set.patches.size() + 1);
  for (const auto& patch : set.patches) patched.emplace_back(patch.offset, patch.offset + patch.newBytes.size());
  std::ranges::sort(patched);
  patched.emplace_back(set.fileSize, set.fileSize);
  std::vector<KeptStretch> kept;
  std::uint64_t at = 0;
  for (const auto& [from, to] : patched) {
    if (from > at) kept.push_back({.oldOffset = at, .newOffset = at, .size = from - at});
    at = to;
  }
  return kept;
}

void ReplaceWhole(const OpenFile& file, const PatchSet& set, const EditOptions& options) {
  AtomicFile out(file.Label(), {.read = IdentityOf(file.Status()),
                                .recorder = options.recorder,
                                .kept = BetweenPatches(set),
                                .stateDirectory = options.stateDirectory,
                                .fileSystem = options.fileSystem});
  const auto copied = ReadInPieces(file, 0, set.fileSize, [&](auto piece) {
    Overlay(set.patches, out.Size(), piece);
    out.Write(piece);
  });
  if (copied != set.fileSize) throw UserError(messages::kChangedMeanwhile + file.Label());
  out.Write(set.appended);
  out.Commit();
}

/// The old file again; throws the sentence of a damaged file if even that fails.
void Revoke(OpenFile& file, const Span& span, std::uint64_t oldSize) {
  try {
    if (!span.oldBytes.empty()) {
      file.Write(span.begin, span.oldBytes);
      file.Sync();
    }
    if (file.Size() != oldSize) {
      file.Truncate(oldSize);
      file.Sync();
    }
  } catch (const UserError& error) {
    throw UserError(messages::kPatchNotRevoked + file.Label() + "\n" + error.what());
  }
}

/// One call only: a rest written later would be a second state between old and new.
void WriteSpan(OpenFile& file, const Span& span) {
  const auto put = file.System().Pwrite(file.Descriptor(), span.newBytes, span.begin);
  if (put < 0) ThrowFileError(messages::kUnableToWrite, file.Label(), errno);
  if (static_cast<std::size_t>(put) != span.newBytes.size()) {
    ThrowFileError(messages::kUnableToWrite, file.Label(), ENOSPC);
  }
  file.Sync();
}

void PatchInPlace(OpenFile& file, const PatchSet& set, Bounds bounds, EditRecorder* recorder) {
  Span span{.begin = bounds.begin, .oldBytes = std::vector<std::byte>(bounds.end - bounds.begin), .newBytes = {}};
  if (file.Read(span.begin, span.oldBytes) != span.oldBytes.size()) {
    throw UserError(messages::kChangedMeanwhile + file.Label());
  }
  span.newBytes = span.oldBytes;
  Overlay(set.patches, span.begin, span.newBytes);
  if (recorder != nullptr) {
    recorder->WillReplaceRange({.path = file.Label(),
                                .offset = span.begin,
                                .oldBytes = span.oldBytes,
                                .newBytes = span.newBytes,
                                .oldSize = set.fileSize,
                                .newSize = set.fileSize + set.appended.size(),
                                .appendedHash = HashOf(set.appended)});
  }
  Span written{.begin = span.begin, .oldBytes = {}, .newBytes = {}};  // what of the span may have been touched
  try {
    if (!set.appended.empty()) {
      file.Write(set.fileSize, set.appended);
      file.Sync();
    }
    if (span.newBytes.empty()) return;
    written.oldBytes = span.oldBytes;
    WriteSpan(file, span);
  } catch (const UserError&) {
    Revoke(file, written, set.fileSize);
    throw;
  }
}

}  // namespace

void ApplyPatches(const std::string& path, const PatchSet& set, const EditOptions& options) {
  auto& fileSystem = *options.fileSystem;
  const auto target = ResolveLinks(fileSystem, path);
  const auto bounds = ChangedBounds(set.patches);
  if (IsReadOnly(target, fileSystem)) throw UserError(messages::kReadOnly + target);
  auto file = OpenRegular(fileSystem, target, O_RDWR);
  CheckUnchanged(file, set);
  if (bounds.begin == bounds.end && set.appended.empty()) return;
  if (bounds.begin != bounds.end && bounds.begin / kInPlacePage != (bounds.end - 1) / kInPlacePage) {
    return ReplaceWhole(file, set, options);
  }
  PatchInPlace(file, set, bounds, options.recorder);
}

}  // namespace ml::platform
