#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/ifd.h"

namespace ml::imaging {

/// A little-endian directory whose entries stand in the order in which they are added, which need not be that of their
/// numbers. Values of up to four bytes stand in their entries, all others behind the directories at even places.
class TiffTags {
 public:
  /// Makes a value that depends on where in the file it stands; its size must not.
  using PlacedValue = std::function<std::vector<std::byte>(std::uint32_t position)>;

  void Short(std::uint16_t tag, int value);
  void Shorts(std::uint16_t tag, std::span<const std::uint16_t> values);
  void Long(std::uint16_t tag, std::uint32_t value);
  void Rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator);
  void SignedRational(std::uint16_t tag, std::int32_t numerator, std::int32_t denominator);
  /// With a zero behind it.
  void Ascii(std::uint16_t tag, std::string_view text);
  /// Values of `type` in the bytes given.
  void Raw(std::uint16_t tag, metadata::IfdType type, std::vector<std::byte> value);
  void Placed(std::uint16_t tag, PlacedValue value);
  /// A long, the position of the directory that follows.
  void NextDirectory(std::uint16_t tag);

  /// Bytes of the directory itself.
  std::uint64_t DirectorySize() const;
  /// Bytes of the values behind, for a file position whose evenness is that of `position`.
  std::uint64_t ValuesSize(std::uint64_t position) const;
  /// Appends the directory, which is to stand at `position`, to `directories` and its values, which are to stand at
  /// `values.Size()` bytes behind `valuesPosition`, to `values`. All positions must fit 32 bits.
  void Write(std::uint64_t position, std::uint64_t valuesPosition, metadata::ByteWriter& directories,
             metadata::ByteWriter& values) const;

 private:
  struct Entry {
    std::uint16_t tag = 0;
    metadata::IfdType type = metadata::IfdType::Undefined;
    std::uint32_t count = 0;
    std::vector<std::byte> value;
    PlacedValue placed;
    bool isNext = false;
  };

  std::vector<Entry> entries_;
};

}  // namespace ml::imaging
