#include "support/tiff_builder.h"

#include <algorithm>

namespace ml::test {
namespace {

constexpr int kByte = 1, kAscii = 2, kShort = 3, kLong = 4, kRational = 5, kUndefined = 7, kSignedRational = 10;
constexpr std::size_t kEntrySize = 12, kFieldInEntry = 8;
constexpr int kFirstPrivateTag = 50000;

TiffBuilder::Numbers Flat(const TiffBuilder::Ratios& ratios) {
  TiffBuilder::Numbers numbers;
  for (const auto& [numerator, denominator] : ratios) {
    numbers.push_back(static_cast<std::uint32_t>(numerator));
    numbers.push_back(static_cast<std::uint32_t>(denominator));
  }
  return numbers;
}

}  // namespace

/// Pieces that stand behind all directories.
struct TiffBuilder::Deferred {
  std::size_t offsets;  ///< place of their first offset
  const std::vector<std::string>* pieces;
};

TiffBuilder& TiffBuilder::Add(Entry entry) {
  entries_.push_back(std::move(entry));
  return *this;
}

TiffBuilder& TiffBuilder::AddNumbers(int tag, int type, int width, const Numbers& values) {
  const auto count = values.size() / (type == kRational || type == kSignedRational ? 2 : 1);
  return Add({.tag = tag, .type = type, .count = static_cast<std::uint32_t>(count), .width = width, .numbers = values});
}

TiffBuilder& TiffBuilder::Ascii(int tag, std::string_view text) {
  const auto stored = std::string(text) + '\0';
  return Data(tag, kAscii, static_cast<std::uint32_t>(stored.size()), stored);
}
TiffBuilder& TiffBuilder::Short(int tag, const Numbers& values) { return AddNumbers(tag, kShort, 2, values); }
TiffBuilder& TiffBuilder::Long(int tag, const Numbers& values) { return AddNumbers(tag, kLong, 4, values); }
TiffBuilder& TiffBuilder::Rational(int tag, const Ratios& values) {
  return AddNumbers(tag, kRational, 4, Flat(values));
}
TiffBuilder& TiffBuilder::Rational(int tag, std::int64_t numerator, std::int64_t denominator) {
  return Rational(tag, Ratios{{numerator, denominator}});
}
TiffBuilder& TiffBuilder::SignedRational(int tag, std::int64_t numerator, std::int64_t denominator) {
  return AddNumbers(tag, kSignedRational, 4, Flat({{numerator, denominator}}));
}
TiffBuilder& TiffBuilder::Bytes(int tag, std::string_view data) {
  return Data(tag, kByte, static_cast<std::uint32_t>(data.size()), data);
}
TiffBuilder& TiffBuilder::Undefined(int tag, std::string_view data) {
  return Data(tag, kUndefined, static_cast<std::uint32_t>(data.size()), data);
}
TiffBuilder& TiffBuilder::Data(int tag, int type, std::uint32_t count, std::string_view data) {
  return Add({.tag = tag, .type = type, .count = count, .data = std::string(data)});
}
TiffBuilder& TiffBuilder::Raw(int tag, int type, std::uint32_t count, std::uint32_t value) {
  return Add({.tag = tag, .type = type, .count = count, .numbers = {value}, .verbatim = true});
}

TiffBuilder& TiffBuilder::Directory(int tag, const TiffBuilder& directory) {
  return Add({.tag = tag, .type = kLong, .count = 1, .width = 4, .numbers = {0}, .children = {directory}});
}
TiffBuilder& TiffBuilder::SubDirectories(const std::vector<TiffBuilder>& directories) {
  return Add({.tag = 330,
              .type = kLong,
              .count = static_cast<std::uint32_t>(directories.size()),
              .width = 4,
              .numbers = Numbers(directories.size()),
              .children = directories});
}
TiffBuilder& TiffBuilder::Note(int tag, std::string_view prefix, const TiffBuilder& directory) {
  return Add({.tag = tag, .type = kUndefined, .data = std::string(prefix), .note = true, .children = {directory}});
}
TiffBuilder& TiffBuilder::Pieces(int offsetTag, int lengthTag, const std::vector<std::string>& pieces) {
  Numbers lengths;
  for (const auto& piece : pieces) lengths.push_back(static_cast<std::uint32_t>(piece.size()));
  Add({.tag = offsetTag,
       .type = kLong,
       .count = static_cast<std::uint32_t>(pieces.size()),
       .width = 4,
       .numbers = Numbers(pieces.size()),
       .pieces = pieces});
  return Long(lengthTag, lengths);
}
TiffBuilder& TiffBuilder::Next(const TiffBuilder& directory) {
  next_ = {directory};
  return *this;
}

TiffBuilder& TiffBuilder::FillTo(std::size_t count) {
  for (int tag = kFirstPrivateTag; EntryCount() < count; ++tag) Short(tag, static_cast<std::uint32_t>(tag));
  return *this;
}
TiffBuilder& TiffBuilder::Without(int tag) {
  std::erase_if(entries_, [tag](const auto& entry) { return entry.tag == tag; });
  return *this;
}
TiffBuilder& TiffBuilder::Magic(int magic) {
  magic_ = magic;
  return *this;
}

std::string TiffBuilder::Build() const {
  ByteString header(order_);
  header.Text(order_ == Endian::Big ? "MM" : "II").Short(static_cast<std::uint64_t>(magic_)).Long(8);
  return BuildBehind(header.Bytes());
}

std::string TiffBuilder::BuildBehind(std::string_view head) const {
  ByteString out(order_);
  out.Text(head);
  std::vector<Deferred> deferred;
  Write(out, deferred);
  for (const auto& [offsets, pieces] : deferred) {
    for (std::size_t i = 0; i < pieces->size(); ++i) {
      out.Align(2).PatchLong(offsets + 4 * i, out.Size());
      out.Text((*pieces)[i]);
    }
  }
  return out.Take();
}

void TiffBuilder::Write(ByteString& out, std::vector<Deferred>& deferred) const {
  std::vector<const Entry*> ordered;
  for (const auto& entry : entries_) ordered.push_back(&entry);
  std::stable_sort(ordered.begin(), ordered.end(), [](const auto* a, const auto* b) { return a->tag < b->tag; });
  out.Short(ordered.size());
  const auto first = out.Size();
  for (const auto* entry : ordered) {
    out.Short(static_cast<std::uint64_t>(entry->tag)).Short(static_cast<std::uint64_t>(entry->type));
    out.Long(entry->count).Long(0);
  }
  const auto next = out.Size();
  out.Long(0);
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    WriteValue(*ordered[i], first + kEntrySize * i + kFieldInEntry, out, deferred);
  }
  for (const auto& directory : next_) {
    out.Align(2).PatchLong(next, out.Size());
    directory.Write(out, deferred);
  }
}

void TiffBuilder::WriteValue(const Entry& entry, std::size_t field, ByteString& out, std::vector<Deferred>& deferred) {
  if (entry.verbatim) return out.PatchLong(field, entry.numbers[0]);
  if (entry.note) return WriteNote(entry, field, out, deferred);
  ByteString value(out.Order());
  for (const auto number : entry.numbers) value.Number(number, entry.width);
  value.Text(entry.data);
  auto place = field;
  if (value.Size() <= 4) {
    out.Patch(field, value.Bytes());
  } else {
    place = out.Align(2).Size();
    out.PatchLong(field, place);
    out.Text(value.Bytes());
  }
  for (std::size_t i = 0; i < entry.children.size(); ++i) {
    out.Align(2).PatchLong(place + 4 * i, out.Size());
    entry.children[i].Write(out, deferred);
  }
  if (!entry.pieces.empty()) deferred.push_back({place, &entry.pieces});
}

void TiffBuilder::WriteNote(const Entry& entry, std::size_t field, ByteString& out, std::vector<Deferred>& deferred) {
  const auto place = out.Align(2).Size();
  out.PatchLong(field, place);
  out.Text(entry.data);
  entry.children[0].Write(out, deferred);
  out.PatchLong(field - 4, out.Size() - place);
}

}  // namespace ml::test
