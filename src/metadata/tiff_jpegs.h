#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"
#include "metadata/ifd.h"

namespace ml::metadata {

/// Looks for JPEG streams in the directories of one TIFF header and keeps the longest. A broken directory costs only
/// itself; none is read twice.
class TiffJpegs {
 public:
  /// Does not own the source. Offsets count from `base`, where the header stands.
  TiffJpegs(const ByteSource& source, std::uint64_t base, ByteOrder order)
      : source_(source), base_(base), order_(order), walker_(source, order, {.base = base, .followNext = false}) {}

  /// One directory without what hangs on it.
  void TakeDirectory(std::uint32_t offset);
  /// The whole chain that begins at `offset`.
  void TakeChain(std::uint32_t offset);
  /// The sub-directories, at most 16 each, of the directories taken so far.
  void TakeSubDirectories();
  /// Takes the range if it is longer than those before and a JPEG stream begins there. Counts from the file's start.
  void Offer(std::uint64_t position, std::uint64_t length);
  void ForgetStreams() { longest_.reset(); }

  std::optional<FileRange> Longest() const { return longest_; }
  /// Offset of the last EXIF directory that was named; 0 if none was.
  std::uint32_t ExifDirectory() const { return exif_; }

 private:
  struct Directory {
    std::uint32_t compression = 0, jpegOffset = 0, jpegLength = 0, stripOffset = 0, stripLength = 0, exif = 0;
    IfdEntry subDirectories;
  };
  static void Note(const IfdEntry& entry, Directory& found);

  const ByteSource& source_;
  std::uint64_t base_;
  ByteOrder order_;
  IfdWalker walker_;
  std::vector<IfdEntry> subDirectories_;
  std::uint32_t exif_ = 0;
  std::optional<FileRange> longest_;
};

}  // namespace ml::metadata
