#include "metadata/edit/tiff_exif.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/edit/canon_note_copy.h"
#include "metadata/edit/ifd_builder.h"
#include "metadata/edit/ifd_directory.h"
#include "metadata/edit/ifd_entry_writer.h"
#include "metadata/edit/value_order.h"
#include "metadata/tiff_tags.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

using namespace std::string_view_literals;

constexpr std::uint64_t kFirstDirectoryPointer = 4;
constexpr std::uint64_t kInEntry = 4;
constexpr std::uint64_t kMaxValue = 1 << 20, kMaxNote = 16 << 20;
constexpr std::size_t kMaxEntries = 256;

namespace tag = tiff_tag;
constexpr std::uint16_t kFirstTags[] = {tag::kDescription, tag::kMake,   tag::kModel,
                                        tag::kDate,        tag::kArtist, tag::kCopyright};
/// They describe the compressed picture of the other file, or are put together here.
constexpr std::uint16_t kNotCopied[] = {tag::kComponents, tag::kBitsPerPixel, tag::kMakerNote,       tag::kColourSpace,
                                        tag::kPixelWidth, tag::kPixelHeight,  tag::kInteroperability};
constexpr std::uint16_t kUncalibrated = 0xffff;

/// Notes that begin like this hold no offsets but those from their own start, and know their own order of bytes.
constexpr std::string_view kOwnNotes[] = {"Nikon\0\2"sv, "FUJIFILM"sv, "OLYMPUS\0"sv, "PENTAX \0"sv};

struct Value {
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  std::vector<std::byte> bytes{};
};

/// The first value of a directory with this tag; nothing if it is not wholly in the file, or of no known type.
std::optional<Value> ReadValue(const ByteSource& source, const IfdDirectory& directory, const IfdEntry* entry,
                               std::uint64_t limit = kMaxValue) {
  if (entry == nullptr || TypeSize(entry->type) == 0) return std::nullopt;
  const auto range = IfdValueRange(directory, static_cast<std::size_t>(entry - directory.entries.data()));
  if (range.size == 0 || range.size > limit) return std::nullopt;
  auto bytes = source.ReadUpTo(range.position, range.size);
  if (bytes.size() != range.size) return std::nullopt;
  return Value{entry->type, entry->count, std::move(bytes)};
}

std::string_view TextOf(const Value& value) { return platform::AsText(value.bytes); }

/// What the other file has, in the order of bytes of the one that it goes to.
class Origin {
 public:
  Origin(const ExifOrigin& origin, ByteOrder order)
      : origin_(origin), order_(order), first_(ReadFirstDirectory(origin.source, origin.base, origin.magic)) {
    const auto exif = SubDirectory(tag::kExif);
    if (!exif) throw ExifException::OutOfBounds;
    exif_ = *exif;
  }

  std::optional<Value> First(std::uint16_t tag) const {
    auto value = ReadValue(origin_.source, first_, first_.Find(tag));
    if (value && first_.order != order_) TurnNumbers(value->bytes, value->type);
    return value;
  }

  std::optional<IfdBuilder> Position() const {
    const auto directory = SubDirectory(tag::kGps);
    if (!directory) return std::nullopt;
    IfdBuilder position(order_);
    Copy(*directory, position);
    return position.Empty() ? std::nullopt : std::optional(std::move(position));
  }

  std::optional<std::uint16_t> ColourSpace() const {
    const auto* entry = exif_.Find(tag::kColourSpace);
    return entry == nullptr ? std::nullopt : std::optional(static_cast<std::uint16_t>(entry->value));
  }

  IfdBuilder Exif() const {
    IfdBuilder exif(order_);
    Copy(exif_, exif);
    AddNote(exif);
    return exif;
  }

 private:
  std::optional<IfdDirectory> SubDirectory(std::uint16_t tag) const {
    const auto* entry = first_.Find(tag);
    if (entry == nullptr || entry->value == 0) return std::nullopt;
    try {
      return ReadIfdDirectory(origin_.source, first_.order, origin_.base, entry->value);
    } catch (ExifException) {
      return std::nullopt;
    }
  }

  void Copy(const IfdDirectory& from, IfdBuilder& to) const {
    std::vector<std::uint16_t> seen(std::begin(kNotCopied), std::end(kNotCopied));
    for (const auto& entry : std::span(from.entries).first(std::min(from.entries.size(), kMaxEntries))) {
      if (std::ranges::find(seen, entry.tag) != seen.end()) continue;
      seen.push_back(entry.tag);
      auto value = ReadValue(origin_.source, from, &entry);
      if (!value) continue;
      if (from.order != order_) TurnNumbers(value->bytes, value->type);
      to.Raw(entry.tag, value->type, value->count, std::move(value->bytes));
    }
  }

  void AddNote(IfdBuilder& exif) const {
    const auto* entry = exif_.Find(tag::kMakerNote);
    auto note = ReadValue(origin_.source, exif_, entry, kMaxNote);
    if (!note || note->bytes.size() <= kInEntry) return;
    const auto isOwn = [&](std::string_view name) { return TextOf(*note).starts_with(name); };
    const auto make = First(tag::kMake);
    if (std::ranges::any_of(kOwnNotes, isOwn)) {
      exif.Raw(tag::kMakerNote, note->type, note->count, std::move(note->bytes));
    } else if (make && origin_.base == 0 && platform::AsciiLower(TextOf(*make)).starts_with("canon")) {
      ExifData place;
      place.littleEndian = exif_.order == ByteOrder::Little;
      place.makerNoteOffset = entry->rawValue;
      place.makerNoteCount = entry->count;
      if (auto canon = CopyCanonNote(place, origin_.source, order_)) exif.Note(tag::kMakerNote, std::move(*canon));
    }
  }

  const ExifOrigin& origin_;
  const ByteOrder order_;
  IfdDirectory first_, exif_;
};

/// New bytes behind the end of the file, and the entries that lead to them.
class Addition {
 public:
  Addition(const EditedFile& file, ByteOrder order)
      : order_(order), start_(file.Size() + file.Size() % 2), out_(order) {}

  void Add(std::uint16_t tag, Value value) {
    value.bytes.resize(std::max<std::size_t>(value.bytes.size(), kInEntry));
    IfdEntry entry{.tag = tag, .type = value.type, .count = value.count};
    if (value.bytes.size() == kInEntry) {
      entry.rawValue = ByteView(value.bytes, order_).readLong(0);
    } else {
      entry.rawValue = Place();
      out_.Bytes(value.bytes);
    }
    entries_.push_back(entry);
  }
  void Add(std::uint16_t tag, IfdBuilder directory) {
    const IfdEntry entry{
        .tag = tag, .type = static_cast<std::uint16_t>(IfdType::Long), .count = 1, .rawValue = Place()};
    directory.Write(out_, static_cast<std::uint32_t>(start_));
    entries_.push_back(entry);
  }

  /// Puts all of it into the file, with the directory changed at its place or written anew.
  void Write(EditedFile& file, const IfdDirectory& old) {
    const auto directory = Merged(old);
    const bool fits = directory.size() <= old.entries.size();
    if (!fits && directory.size() > kMaxFirstEntries) throw ExifException::DirectoryFull;
    const auto place = Place();
    if (!fits) PutIfdDirectory(out_, directory, old.next);
    AppendTiffData(file, out_.View());
    ByteWriter change(order_);
    if (fits) {
      PutIfdDirectory(change, directory, old.next);
      file.Overwrite(old.position, change.View());
    } else {
      change.Long(place);
      file.Overwrite(kFirstDirectoryPointer, change.View());
    }
  }

 private:
  /// Where the next value comes to stand. A file that is too long for it is refused when all is written.
  std::uint32_t Place() {
    if (out_.Size() % 2 != 0) out_.Byte(0);
    return static_cast<std::uint32_t>(start_ + out_.Size());
  }

  std::vector<IfdEntry> Merged(const IfdDirectory& old) const {
    auto merged = entries_;
    const auto replaced = [&](const IfdEntry& entry) {
      return std::ranges::find(entries_, entry.tag, &IfdEntry::tag) != entries_.end();
    };
    std::ranges::copy_if(old.entries, std::back_inserter(merged), [&](const auto& entry) { return !replaced(entry); });
    std::ranges::stable_sort(merged, {}, &IfdEntry::tag);
    return merged;
  }

  const ByteOrder order_;
  const std::uint64_t start_;
  ByteWriter out_;
  std::vector<IfdEntry> entries_;
};

/// A camera fills descriptions that nobody wrote with blanks.
bool IsBlank(const Value& value) { return TextOf(value).find_first_not_of(" \0"sv) == std::string_view::npos; }

/// What is true of this file's picture, whatever the other one was.
void DescribePicture(const IfdDirectory& first, std::optional<std::uint16_t> colourSpace, IfdBuilder& exif) {
  const auto* width = first.Find(tag::kWidth);
  const auto* height = first.Find(tag::kHeight);
  if (width != nullptr) exif.Long(tag::kPixelWidth, width->value);
  if (height != nullptr) exif.Long(tag::kPixelHeight, height->value);
  if (first.Find(tag::kIccProfile) != nullptr) colourSpace = kUncalibrated;
  if (colourSpace) exif.Short(tag::kColourSpace, *colourSpace);
}

}  // namespace

void WriteTiffExif(EditedFile& tiff, const ExifOrigin& origin) {
  const auto first = ReadFirstDirectory(tiff, 0, TiffMagic::Required);
  const Origin other(origin, first.order);
  const auto description = ReadValue(tiff, first, first.Find(tag::kDescription));
  Addition addition(tiff, first.order);
  for (const auto tag : kFirstTags) {
    auto value = other.First(tag);
    if (!value || (tag == tag::kDescription && (IsBlank(*value) || (description && !IsBlank(*description))))) continue;
    addition.Add(tag, std::move(*value));
  }
  auto exif = other.Exif();
  DescribePicture(first, other.ColourSpace(), exif);
  addition.Add(tag::kExif, std::move(exif));
  if (auto position = other.Position()) addition.Add(tag::kGps, std::move(*position));
  addition.Write(tiff, first);
}

}  // namespace ml::metadata
