#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/byte_string.h"

namespace ml::test {

/// A TIFF structure: a directory, with the directories and blocks that hang on it. The builder on which Build
/// is called gives header and byte order, those inside it are directories only.
///
/// Entries are written in rising order of tags, equal tags as they were added. Values of up to four bytes
/// stand in their entry, all others at an even offset behind the directory.
class TiffBuilder {
 public:
  using Numbers = std::vector<std::uint32_t>;
  /// Numerator and denominator; negative numbers as their two's complement.
  using Ratios = std::vector<std::pair<std::int64_t, std::int64_t>>;

  explicit TiffBuilder(Endian order = Endian::Little) : order_(order) {}

  /// Type 2. A zero is added to the text and counted.
  TiffBuilder& Ascii(int tag, std::string_view text);
  /// Types 3, 4, 5 and 10.
  TiffBuilder& Short(int tag, const Numbers& values);
  TiffBuilder& Short(int tag, std::uint32_t value) { return Short(tag, Numbers{value}); }
  TiffBuilder& Long(int tag, const Numbers& values);
  TiffBuilder& Long(int tag, std::uint32_t value) { return Long(tag, Numbers{value}); }
  TiffBuilder& Rational(int tag, const Ratios& values);
  TiffBuilder& Rational(int tag, std::int64_t numerator, std::int64_t denominator = 1);
  TiffBuilder& SignedRational(int tag, std::int64_t numerator, std::int64_t denominator = 1);
  /// Types 1 and 7; one value a byte.
  TiffBuilder& Bytes(int tag, std::string_view data);
  TiffBuilder& Undefined(int tag, std::string_view data);
  /// Any type and count over these bytes, which are not turned to the byte order.
  TiffBuilder& Data(int tag, int type, std::uint32_t count, std::string_view data);
  /// The twelve bytes of an entry as told; `value` is written as one long whatever the type.
  TiffBuilder& Raw(int tag, int type, std::uint32_t count, std::uint32_t value);

  /// A directory of its own behind this one, with a long that points at it: tag 34665 for EXIF.
  TiffBuilder& Directory(int tag, const TiffBuilder& directory);
  /// Tag 330: as many longs as directories.
  TiffBuilder& SubDirectories(const std::vector<TiffBuilder>& directories);
  /// A block of type 7 that holds a prefix and then a directory, whose offsets count from the TIFF header, as
  /// in most maker notes (tag 37500).
  TiffBuilder& Note(int tag, std::string_view prefix, const TiffBuilder& directory);
  /// The pieces behind all directories; their offsets and lengths as longs in two entries. Strips are tags 273
  /// and 279, an embedded JPEG 513 and 514.
  TiffBuilder& Pieces(int offsetTag, int lengthTag, const std::vector<std::string>& pieces);
  /// The directory that follows this one.
  TiffBuilder& Next(const TiffBuilder& directory);

  /// Adds shorts with private tags from 50000 until the directory holds `count` entries.
  TiffBuilder& FillTo(std::size_t count);
  /// Removes the entries of a tag.
  TiffBuilder& Without(int tag);
  /// Instead of 42.
  TiffBuilder& Magic(int magic);

  Endian Order() const { return order_; }
  std::size_t EntryCount() const { return entries_.size(); }
  std::string Build() const;
  /// Behind `head` instead of a TIFF header; offsets count from the start of that.
  std::string BuildBehind(std::string_view head) const;

 private:
  struct Entry {
    int tag = 0, type = 0;
    std::uint32_t count = 0;
    int width = 0;                        ///< bytes of each of the numbers; 0: the value is `data`
    Numbers numbers{};                    ///< the value
    std::string data{};                   ///< the value, or the prefix of a note
    bool verbatim = false;                ///< the first number is the value field itself
    bool note = false;                    ///< the one child belongs to the value
    std::vector<TiffBuilder> children{};  ///< the value lists their offsets ..
    std::vector<std::string> pieces{};    ///< .. or those of these
  };
  struct Deferred;

  TiffBuilder& Add(Entry entry);
  TiffBuilder& AddNumbers(int tag, int type, int width, const Numbers& values);
  void Write(ByteString& out, std::vector<Deferred>& deferred) const;
  static void WriteValue(const Entry& entry, std::size_t field, ByteString& out, std::vector<Deferred>& deferred);
  static void WriteNote(const Entry& entry, std::size_t field, ByteString& out, std::vector<Deferred>& deferred);

  Endian order_;
  int magic_ = 42;
  std::vector<Entry> entries_;
  std::vector<TiffBuilder> next_;  ///< none or one
};

}  // namespace ml::test
