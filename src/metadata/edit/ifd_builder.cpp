#include "metadata/edit/ifd_builder.h"

#include <algorithm>
#include <utility>

namespace ml::metadata {
namespace {

constexpr std::size_t kInEntry = 4;  ///< bytes that stand in the entry itself

std::uint32_t Place(const ByteWriter& out, std::uint32_t origin) {
  return origin + static_cast<std::uint32_t>(out.Size());
}

}  // namespace

void IfdBuilder::Add(std::uint16_t tag, IfdType type, std::size_t count, ByteWriter& value) {
  entries_.push_back({tag, type, static_cast<std::uint32_t>(count), value.Take(), Form::Value, {}});
}

void IfdBuilder::Ascii(std::uint16_t tag, std::string_view text, std::size_t field) {
  ByteWriter value(order_);
  value.Text(text);
  value.Zeros(std::max(text.size() + 1, field) - text.size());
  Add(tag, IfdType::Ascii, value.Size(), value);
}

void IfdBuilder::Shorts(std::uint16_t tag, std::span<const std::uint16_t> values) {
  ByteWriter value(order_);
  for (const auto number : values) value.Short(number);
  Add(tag, IfdType::Short, values.size(), value);
}

void IfdBuilder::Long(std::uint16_t tag, std::uint32_t number) {
  ByteWriter value(order_);
  value.Long(number);
  Add(tag, IfdType::Long, 1, value);
}

void IfdBuilder::Rational(std::uint16_t tag, std::uint32_t numerator, std::uint32_t denominator) {
  ByteWriter value(order_);
  value.Long(numerator);
  value.Long(denominator);
  Add(tag, IfdType::Rational, 1, value);
}

void IfdBuilder::SignedRational(std::uint16_t tag, std::int32_t numerator, std::int32_t denominator) {
  ByteWriter value(order_);
  value.Long(static_cast<std::uint32_t>(numerator));
  value.Long(static_cast<std::uint32_t>(denominator));
  Add(tag, IfdType::SignedRational, 1, value);
}

void IfdBuilder::Undefined(std::uint16_t tag, std::span<const std::byte> bytes) {
  ByteWriter value(order_);
  value.Bytes(bytes);
  Add(tag, IfdType::Undefined, bytes.size(), value);
}

void IfdBuilder::Directory(std::uint16_t tag, IfdBuilder directory) {
  entries_.push_back({tag, IfdType::Long, 1, {}, Form::Directory, {std::move(directory)}});
}

void IfdBuilder::Note(std::uint16_t tag, IfdBuilder directory) {
  entries_.push_back({tag, IfdType::Undefined, 0, {}, Form::Note, {std::move(directory)}});
}

void IfdBuilder::Write(ByteWriter& out, std::uint32_t origin) {
  std::ranges::stable_sort(entries_, {}, &Entry::tag);
  std::vector<std::pair<Entry*, std::size_t>> behind;  // what stands behind, and where its entry's count is
  out.Short(static_cast<std::uint16_t>(entries_.size()));
  for (auto& entry : entries_) {
    out.Short(entry.tag);
    out.Short(static_cast<std::uint16_t>(entry.type));
    const auto count = out.ReserveLong();
    out.PatchLong(count, entry.count);
    if (entry.form == Form::Value && entry.value.size() <= kInEntry) {
      out.Bytes(entry.value);
      out.Zeros(kInEntry - entry.value.size());
    } else {
      out.ReserveLong();
      behind.emplace_back(&entry, count);
    }
  }
  out.Long(0);  // no directory follows
  for (const auto& [entry, count] : behind) {
    if (out.Size() % 2 != 0) out.Byte(0);
    const auto place = Place(out, origin);
    out.PatchLong(count + 4, place);
    if (entry->form == Form::Value) {
      out.Bytes(entry->value);
    } else {
      entry->child.front().Write(out, origin);
    }
    if (entry->form == Form::Note) out.PatchLong(count, Place(out, origin) - place);
  }
}

}  // namespace ml::metadata
