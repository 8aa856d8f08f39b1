#include "imaging/tiff/tiff_tags.h"

#include <utility>

namespace ml::imaging {
namespace {

using metadata::ByteOrder;
using metadata::ByteWriter;
using metadata::IfdType;

constexpr std::size_t kInEntry = 4;    ///< bytes that stand in the entry itself
constexpr std::uint64_t kFraming = 6;  ///< bytes of a directory beside its entries

}  // namespace

void TiffTags::Short(std::uint16_t tag, int value) {
  const auto number = static_cast<std::uint16_t>(value);
  Shorts(tag, std::span(&number, 1));
}

void TiffTags::Shorts(std::uint16_t tag, std::span<const std::uint16_t> values) {
  ByteWriter value(ByteOrder::Little);
  for (const auto number : values) value.Short(number);
  Raw(tag, IfdType::Short, value.Take());
}

void TiffTags::Long(std::uint16_t tag, std::uint32_t number) {
  ByteWriter value(ByteOrder::Little);
  value.Long(number);
  Raw(tag, IfdType::Long, value.Take());
}

void TiffTags::Rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator) {
  ByteWriter value(ByteOrder::Little);
  value.Long(numerator);
  value.Long(denominator);
  Raw(tag, IfdType::Rational, value.Take());
}

void TiffTags::SignedRational(std::uint16_t tag, std::int32_t numerator, std::int32_t denominator) {
  Rational(tag, static_cast<std::uint32_t>(numerator), static_cast<std::uint32_t>(denominator));
  entries_.back().type = IfdType::SignedRational;
}

void TiffTags::Ascii(std::uint16_t tag, std::string_view text) {
  ByteWriter value(ByteOrder::Little);
  value.Text(text);
  value.Byte(0);
  Raw(tag, IfdType::Ascii, value.Take());
}

void TiffTags::Raw(std::uint16_t tag, IfdType type, std::vector<std::byte> value) {
  const auto count = value.size() / metadata::TypeSize(static_cast<std::uint16_t>(type));
  entries_.push_back({tag, type, static_cast<std::uint32_t>(count), std::move(value), nullptr, false});
}

void TiffTags::Placed(std::uint16_t tag, PlacedValue value) {
  Raw(tag, IfdType::Undefined, value(0));
  entries_.back().placed = std::move(value);
}

void TiffTags::NextDirectory(std::uint16_t tag) {
  Long(tag, 0);
  entries_.back().isNext = true;
}

std::uint64_t TiffTags::DirectorySize() const { return kFraming + entries_.size() * metadata::kIfdEntrySize; }

std::uint64_t TiffTags::ValuesSize(std::uint64_t position) const {
  auto end = position;
  for (const auto& entry : entries_) {
    if (entry.value.size() > kInEntry) end += end % 2 + entry.value.size();
  }
  return end - position;
}

void TiffTags::Write(std::uint64_t position, std::uint64_t valuesPosition, ByteWriter& directories,
                     ByteWriter& values) const {
  directories.Short(static_cast<std::uint16_t>(entries_.size()));
  for (const auto& entry : entries_) {
    directories.Short(entry.tag);
    directories.Short(static_cast<std::uint16_t>(entry.type));
    directories.Long(entry.count);
    if (entry.isNext) {
      directories.Long(static_cast<std::uint32_t>(position + DirectorySize()));
    } else if (entry.value.size() <= kInEntry) {
      directories.Bytes(entry.value);
      directories.Zeros(kInEntry - entry.value.size());
    } else {
      if ((valuesPosition + values.Size()) % 2 != 0) values.Byte(0);
      const auto place = static_cast<std::uint32_t>(valuesPosition + values.Size());
      directories.Long(place);
      values.Bytes(entry.placed ? entry.placed(place) : entry.value);
    }
  }
  directories.Long(0);  // no picture follows
}

}  // namespace ml::imaging
