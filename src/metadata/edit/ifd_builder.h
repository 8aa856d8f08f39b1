#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/ifd.h"

namespace ml::metadata {

/// A directory to be written, with the directories that its entries lead to. Entries may be added in any order; each
/// tag once. Values of up to four bytes stand in their entries, all others behind the directory at even places.
class IfdBuilder {
 public:
  explicit IfdBuilder(ByteOrder order) : order_(order) {}

  /// Text with a zero behind it, in a field of at least `field` bytes that is filled with zeros. A field of less than
  /// five bytes would stand in the entry, where not every reader looks.
  void Ascii(std::uint16_t tag, std::string_view text, std::size_t field = 6);
  void Short(std::uint16_t tag, std::uint16_t value) { Shorts(tag, std::span(&value, 1)); }
  void Shorts(std::uint16_t tag, std::span<const std::uint16_t> values);
  void Long(std::uint16_t tag, std::uint32_t value);
  void Rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator);
  void SignedRational(std::uint16_t tag, std::int32_t numerator, std::int32_t denominator);
  void Undefined(std::uint16_t tag, std::span<const std::byte> bytes);
  /// A value of any type whose bytes are in the builder's order already.
  void Raw(std::uint16_t tag, std::uint16_t type, std::uint32_t count, std::vector<std::byte> value) {
    entries_.push_back({tag, static_cast<IfdType>(type), count, std::move(value), Form::Value, {}});
  }
  /// A long that leads to `directory`.
  void Directory(std::uint16_t tag, IfdBuilder directory);
  /// A field of type undefined that is `directory` itself, its offsets counting from the TIFF header.
  void Note(std::uint16_t tag, IfdBuilder directory);

  bool Empty() const { return entries_.empty(); }
  /// Writes all of it; the first byte of `out` comes to stand `origin` behind the TIFF header, an even number.
  void Write(ByteWriter& out, std::uint32_t origin = 0);

 private:
  enum class Form { Value, Directory, Note };
  struct Entry {
    std::uint16_t tag = 0;
    IfdType type = IfdType::Undefined;
    std::uint32_t count = 0;
    std::vector<std::byte> value;
    Form form = Form::Value;
    std::vector<IfdBuilder> child;  ///< none or one
  };

  void Add(std::uint16_t tag, IfdType type, std::size_t count, ByteWriter& value);

  ByteOrder order_;
  std::vector<Entry> entries_;
};

}  // namespace ml::metadata
