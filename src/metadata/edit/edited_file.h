#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"
#include "platform/edit_recorder.h"
#include "platform/in_place_patch.h"

namespace ml::metadata {

/// A file as it is to become: the original with stretches replaced, put in and taken out. It reads like any other
/// source, so a writer looks at what the writers before it left, and the outcome is checked before a byte of the file
/// changes. Positions always count in the present content. Holds only the new bytes; the original must outlive it.
class EditedFile final : public ByteSource {
 public:
  explicit EditedFile(const ByteSource& original);

  std::uint64_t Size() const override { return size_; }
  std::size_t ReadSome(std::uint64_t offset, std::span<std::byte> out) const override;

  /// Puts `bytes`, which may be more or fewer, in the place of `range`. Throws ExifException::OutOfBounds if the range
  /// is not inside the content.
  void Replace(FileRange range, std::span<const std::byte> bytes);
  void Insert(std::uint64_t position, std::span<const std::byte> bytes) { Replace({position, 0}, bytes); }
  void Remove(FileRange range) { Replace(range, {}); }
  void Append(std::span<const std::byte> bytes) { Replace({size_, 0}, bytes); }
  /// As many bytes as stand there now.
  void Overwrite(std::uint64_t position, std::span<const std::byte> bytes) { Replace({position, bytes.size()}, bytes); }

  const ByteSource& Original() const { return original_; }
  /// Whether anything was replaced, if only by the same bytes.
  bool Touched() const { return !added_.empty() || size_ != original_.Size(); }
  /// Whether `range` is an untouched stretch of the original, the one at `originalRange`, so that nobody has to compare
  /// their bytes.
  bool Keeps(FileRange range, FileRange originalRange) const;
  /// All stretches of the original that are still there, in their order.
  std::vector<platform::KeptStretch> Kept() const;
  /// The edit as bytes overwritten at their places and bytes behind the end; nothing if any of the original would
  /// have to move.
  std::optional<platform::PatchSet> InPlace() const;

 private:
  struct Piece {
    bool original = true;
    std::uint64_t position = 0;  ///< in the original or in `added_`
    std::uint64_t size = 0;
  };

  /// Makes a piece begin at `position` of the content and gives its index; the number of pieces at the end.
  std::size_t SplitAt(std::uint64_t position);

  const ByteSource& original_;
  std::uint64_t size_;
  std::vector<Piece> pieces_;  ///< in the order of the content, none empty
  std::vector<std::byte> added_;
};

/// Whether two stretches hold the same bytes. Compares piece by piece: the files may be large.
bool SameBytes(const ByteSource& first, FileRange firstRange, const ByteSource& second, FileRange secondRange);

}  // namespace ml::metadata
