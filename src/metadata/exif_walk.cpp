#include "metadata/exif_walk.h"

#include <limits>

#include "metadata/exif_block.h"
#include "metadata/exif_tags.h"
#include "metadata/exif_values.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kMaxExifEntries = 50;
/// A sub-directory with so many entries is passed over: those that describe a picture are small.
constexpr std::uint32_t kTooManySubIfdEntries = 40;

constexpr std::uint32_t kSmallestFilePlace = 4;   ///< shorter values stand in the entry
constexpr std::uint32_t kSmallestBlockPlace = 9;  ///< a comment with an encoding in front

constexpr std::uint64_t kMaxBytes = 64ULL << 20;  ///< of a block of foreign data

}  // namespace

ExifWalkRules BlockRules() {
  const IfdPolicy policy{.followNext = false};  // the second directory describes a thumbnail
  return {.form = MakerNoteForm::Block, .base = 0, .ifd0 = policy, .exif = policy};
}

ExifWalkRules FileRules(std::uint64_t base) {
  const IfdPolicy policy{.base = base, .maxEntries = kMaxFirstEntries, .followNext = false, .visitCutDirectory = false};
  auto exif = policy;
  exif.maxEntries = kMaxExifEntries;
  return {.form = MakerNoteForm::File, .base = base, .ifd0 = policy, .exif = exif};
}

ExifWalk::ExifWalk(ExifData& data, const ByteSource& source, ByteView block, const ExifWalkRules& rules)
    : data_(data),
      source_(source),
      block_(block),
      rules_(rules),
      walker_(source, data.littleEndian ? ByteOrder::Little : ByteOrder::Big, rules.ifd0) {}

void ExifWalk::WalkIfd0(std::uint32_t offset) {
  data_.ifd0EntryCount = source_.ReadNumber(rules_.base + offset, 2, walker_.Order());
  walker_.Walk(offset, [this](const IfdEntry& entry) {
    directory_ = Directory::Ifd0;
    Apply(entry);
    return Visit::Continue;
  });
}

void ExifWalk::EnterExif(const IfdEntry& pointer) {
  if (pointer.value == 0) return;
  data_.exifIfdEntryCount = source_.ReadNumber(rules_.base + pointer.value, 2, walker_.Order());
  walker_.Walk(pointer.value, rules_.exif, [this](const IfdEntry& entry) {
    directory_ = Directory::Exif;
    Apply(entry);
    return Visit::Continue;
  });
}

void ExifWalk::EnterSubIfd(const IfdEntry& pointer) {
  const auto longAt = [&](std::uint64_t offset) {
    return source_.ReadNumber(rules_.base + pointer.value + offset, 4, walker_.Order());
  };
  const bool isPair = pointer.count == 2 && pointer.Is(IfdType::Long);
  if (!isPair) {
    TakeSizeOfSubIfd(pointer.value);
  } else if (!TakeSizeOfSubIfd(longAt(0))) {
    TakeSizeOfSubIfd(longAt(4));  // the first of some cameras describes a preview without naming its size
  }
}

/// False if there is no size.
bool ExifWalk::TakeSizeOfSubIfd(std::uint32_t offset) {
  if (source_.ReadNumber(rules_.base + offset, 2, walker_.Order()) >= kTooManySubIfdEntries) return false;
  bool found = false;
  walker_.Walk(offset, rules_.exif, [&](const IfdEntry& entry) {
    if (entry.tag == tiff_tag::kWidth) data_.imageWidth = static_cast<std::int32_t>(entry.value);
    if (entry.tag == tiff_tag::kHeight) data_.imageHeight = static_cast<std::int32_t>(entry.value);
    found |= entry.tag == tiff_tag::kWidth || entry.tag == tiff_tag::kHeight;
    return Visit::Continue;
  });
  return found;
}

void ExifWalk::Apply(const IfdEntry& entry) {
  const auto first = InFile() ? tag_place::kFileIfd0 : tag_place::kBlockIfd0;
  const auto second = InFile() ? tag_place::kFileExif : tag_place::kBlockExif;
  if (const auto read = FindTagReader(entry.tag, directory_ == Directory::Ifd0 ? first : second)) read(*this, entry);
}

/// Kept: only texts and directories of the first directory count from the TIFF header. Files with a header of their own
/// in front (MRW, RAF) show no numbers from there, and programs beside this one show the same.
std::uint64_t ExifWalk::NumberBase() const { return directory_ == Directory::Ifd0 ? 0 : rules_.base; }

std::string ExifWalk::Text(const IfdEntry& entry) const {
  return InFile() ? readIFDstring(source_, entry, rules_.base) : readASCII(block_, entry);
}

std::optional<double> ExifWalk::Rational(const IfdEntry& entry) const {
  return InFile() ? readIFDrational(source_, walker_.Order(), entry, NumberBase()) : readRational(block_, entry);
}

std::string ExifWalk::Comment(const IfdEntry& entry) const {
  return InFile() ? readIFDcomment(source_, entry, NumberBase()) : readUserComment(block_, entry);
}

/// Sound directories hold a tag once. A damaged one may name the same large block thousands of times, each of which
/// would cost its whole reading again.
bool ExifWalk::IsFirst(const IfdEntry& entry) { return taken_.insert({directory_, entry.tag}).second; }

std::vector<std::byte> ExifWalk::Bytes(const IfdEntry& entry) {
  if (!IsFirst(entry)) return {};
  const auto size = std::uint64_t{entry.count} * (entry.Is(IfdType::Long) ? 4 : 1);
  const auto position = rules_.base + entry.value;
  if (size < kSmallestFilePlace || size > kMaxBytes || position > source_.Size() || size > source_.Size() - position)
    return {};
  return source_.Read(position, static_cast<std::size_t>(size));
}

void ExifWalk::ReadMakerNote(const IfdEntry& entry) {
  if (InFile()) {
    data_.makerNoteOffset = entry.rawValue;
    data_.makerNoteCount = entry.count;
  }
  const auto read = FindMakerNoteReader(data_.make);
  if (read == nullptr || !IsFirst(entry)) return;
  // Kept: a note's offset never counts from the TIFF header of a file that has something in front of it.
  const MakerNote note{source_, walker_.Order(), entry.rawValue, entry.count, rules_.form};
  try {
    read(data_, note);
  } catch (ExifException) {
    return;  // a damaged note never costs the fields behind it
  }
}

/// The place of an entry's data, in the file or in the copy of the segment, if they are wholly there, else 0.
std::uint32_t ExifWalk::PlaceOf(const IfdEntry& entry, std::uint64_t base) const {
  auto position = base + entry.value;
  if (position > source_.Size() || entry.count > source_.Size() - position) return 0;
  if (!InFile()) position += kExifSegmentHead;
  return position > std::numeric_limits<std::uint32_t>::max() ? 0 : static_cast<std::uint32_t>(position);
}

void ExifWalk::KeepDescriptionPlace(const IfdEntry& entry) {
  if (!entry.Is(IfdType::Ascii) || (InFile() && entry.count < kSmallestFilePlace)) return;
  const auto place = PlaceOf(entry, rules_.base);
  if (place == 0) return;
  (InFile() ? data_.imageDescriptionOffset : data_.imageDescriptionPtr) = place;
  data_.imageDescriptionCount = entry.count;
}

void ExifWalk::KeepCommentPlace(const IfdEntry& entry) {
  if (!entry.Is(IfdType::Ascii) && !entry.Is(IfdType::Undefined)) return;
  if (entry.count < (InFile() ? kSmallestFilePlace : kSmallestBlockPlace)) return;
  const auto place = PlaceOf(entry, NumberBase());
  if (place == 0) return;
  (InFile() ? data_.userCommentOffset : data_.userCommentPtr) = place;
  (InFile() ? data_.userCommentCount : data_.userCommentSize) = entry.count;
}

}  // namespace ml::metadata
