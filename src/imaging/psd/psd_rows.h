#pragma once

#include <cstdint>
#include <vector>

#include "imaging/psd/psd_layout.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// `packed` undone (PackBits) into `out`; the number of bytes that came out. What is left of `out` stays as it is.
std::size_t UnpackBits(std::span<const std::byte> packed, std::span<std::byte> out);

/// The rows of the merged picture, one channel after the other.
class PsdRows {
 public:
  /// Does not own the arguments. Throws LibraryError if the samples are compressed in another way than
  /// PackBits, ExifException if the lengths of the rows are cut short.
  PsdRows(const metadata::ByteSource& source, const PsdLayout& layout);

  /// Fills `row`, layout.RowBytes() long, with the next row; false if a byte of it is missing.
  bool Next(std::span<std::byte> row);

 private:
  std::size_t PackedLength();

  const metadata::ByteSource& source_;
  std::size_t entrySize_;
  bool packed_;
  std::vector<std::byte> lengths_;
  std::size_t row_ = 0;
  std::uint64_t position_;
  std::vector<std::byte> buffer_;
};

}  // namespace ml::imaging
