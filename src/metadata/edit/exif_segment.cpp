#include "metadata/edit/exif_segment.h"

#include <algorithm>
#include <utility>

#include "metadata/byte_writer.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kSmallest = 16;
constexpr std::size_t kLargest = 65'535;          ///< what a length field can say
constexpr std::uint64_t kLargestFilled = 65'520;  ///< with a thumbnail
constexpr std::uint64_t kValueInEntry = 8;

constexpr std::uint16_t kShort = 3, kLong = 4, kRational = 5;
constexpr std::uint16_t kJpegCompression = 6, kInches = 2;
constexpr std::uint32_t kThumbnailResolution = 72;

ByteOrder CheckedOrder(std::span<const std::byte> segment) {
  using platform::UserError;
  const ByteView view(segment, ByteOrder::Big);
  if (segment.size() < kSmallest) throw UserError(messages::kExifTooSmall);
  if (!view.StartsWith("Exif", 2)) throw UserError(messages::kExifNotExif);
  const bool little = view.StartsWith("II", kExifSegmentHead);
  if (!little && !view.StartsWith("MM", kExifSegmentHead)) throw UserError(messages::kExifAlignment);
  const auto order = little ? ByteOrder::Little : ByteOrder::Big;
  if (view.WithOrder(order).readShort(kExifSegmentHead + 2) != 42) throw UserError(messages::kExifNoTag);
  return order;
}

/// Six entries, the end of the chain and two resolutions: 94 bytes. `offset` is where it will stand.
std::vector<std::byte> ThumbnailDirectory(ByteOrder order, std::uint32_t offset) {
  constexpr std::uint16_t kEntries = 6;
  constexpr std::uint32_t kResolutions = 2 + kEntries * kIfdEntrySize + 4, kSize = kResolutions + 2 * 8;
  static_assert(kSize == 94);
  ByteWriter out(order);
  const auto entry = [&](std::uint16_t tag, std::uint16_t type, std::uint32_t value) {
    out.Short(tag), out.Short(type), out.Long(1);
    if (type != kShort) return out.Long(value);
    out.Short(static_cast<std::uint16_t>(value)), out.Short(0);
  };
  out.Short(kEntries);
  entry(259, kShort, kJpegCompression);
  entry(282, kRational, offset + kResolutions);
  entry(283, kRational, offset + kResolutions + 8);
  entry(296, kShort, kInches);
  entry(513, kLong, offset + kSize);
  entry(514, kLong, 0);
  out.Long(0);
  for (int i = 0; i < 2; ++i) out.Long(kThumbnailResolution), out.Long(1);
  return out.Take();
}

}  // namespace

ExifSegment::ExifSegment(std::vector<std::byte> segment) : data_(std::move(segment)), order_(CheckedOrder(data_)) {
  if (data_.size() > kLargest) data_.resize(kLargest);
  Update();
}

void ExifSegment::Update() {
  ByteWriter length(ByteOrder::Big);
  length.Short(static_cast<std::uint16_t>(data_.size()));
  std::ranges::copy(length.View(), data_.begin());
  layout_ = FindExifLayout(Tiff());
}

std::uint16_t ExifSegment::readShort(std::uint64_t offset) const try {
  return Tiff().readShort(offset);
} catch (ExifException) {
  throw platform::UserError(messages::kReadShortOverflow);
}

std::uint32_t ExifSegment::readLong(std::uint64_t offset) const try {
  return Tiff().readLong(offset);
} catch (ExifException) {
  throw platform::UserError(messages::kReadLongOverflow);
}

void ExifSegment::writeShort(std::uint64_t offset, std::uint16_t value) {
  if (Tiff().Size() < 2 || offset > Tiff().Size() - 2) throw platform::UserError(messages::kWriteShortOverflow);
  ByteWriter bytes(order_);
  bytes.Short(value);
  FillField({offset, 2}, bytes.View());
}

void ExifSegment::writeLong(std::uint64_t offset, std::uint32_t value) {
  if (Tiff().Size() < 4 || offset > Tiff().Size() - 4) throw platform::UserError(messages::kWriteLongOverflow);
  ByteWriter bytes(order_);
  bytes.Long(value);
  FillField({offset, 4}, bytes.View());
}

void ExifSegment::WriteNumber(const IfdEntry& entry, std::uint32_t value) {
  const auto place = entry.position + kValueInEntry;
  if (entry.Is(IfdType::Short)) writeShort(place, static_cast<std::uint16_t>(value));
  if (entry.Is(IfdType::Long)) writeLong(place, value);
}

void ExifSegment::FillField(FileRange field, std::span<const std::byte> bytes) {
  const auto start = data_.begin() + static_cast<std::ptrdiff_t>(kExifSegmentHead + field.position);
  std::fill(std::ranges::copy(bytes, start).out, start + static_cast<std::ptrdiff_t>(field.size), std::byte{0});
}

bool ExifSegment::AddThumbnailDirectory() {
  const auto link = layout_.lastLink;
  // Some writers leave the link out, and a value stands where it should be.
  if (!link || layout_.broken || layout_.CountUses({*link, 4}) != 1) return false;
  const auto offset = static_cast<std::uint32_t>((Tiff().Size() + 1) / 2 * 2);
  const auto directory = ThumbnailDirectory(order_, offset);
  if (kExifSegmentHead + offset + directory.size() > kLargestFilled || ReadsBehindEnd(directory.size())) return false;
  writeLong(*link, offset);
  data_.resize(kExifSegmentHead + offset);
  Append(directory);
  return true;
}

bool ExifSegment::ReadsBehindEnd(std::uint64_t added) const { return layout_.Uses({Tiff().Size(), added + 1}); }

bool ExifSegment::ThumbnailIsLast() const {
  const auto& range = layout_.thumbnail->range;
  const auto behind = Tiff().From(range.End()).Bytes();
  // Cameras fill up with either.
  return !layout_.Uses({range.position, Tiff().Size() - range.position}) &&
         std::ranges::all_of(behind, [](std::byte byte) { return byte == std::byte{0} || byte == std::byte{0xff}; });
}

std::uint64_t ExifSegment::ThumbnailRoom() const {
  if (!HasThumbnail()) return 0;
  const auto& range = layout_.thumbnail->range;
  const auto kept = ThumbnailIsLast() ? kExifSegmentHead + range.position : data_.size() + data_.size() % 2;
  const auto room = kLargestFilled - std::min<std::uint64_t>(kLargestFilled, kept);
  return layout_.Uses(range) ? room : std::max(room, range.size);
}

bool ExifSegment::SetThumbnail(std::span<const std::byte> jpeg) {
  if (!HasThumbnail() || layout_.broken || jpeg.size() > ThumbnailRoom()) return false;
  const auto thumbnail = *layout_.thumbnail;
  const auto length = static_cast<std::uint32_t>(jpeg.size());
  const bool last = ThumbnailIsLast();
  auto field = thumbnail.range;
  if (last) field.size = Tiff().Size() - field.position;
  if (jpeg.size() <= field.size && !layout_.Uses(field)) {
    WriteNumber(thumbnail.lengthEntry, length);
    FillField(field, jpeg);
    Update();
    return true;
  }
  if (ReadsBehindEnd(jpeg.size())) return false;
  if (last) data_.resize(kExifSegmentHead + field.position);
  data_.resize(data_.size() + data_.size() % 2);
  WriteNumber(thumbnail.lengthEntry, length);
  WriteNumber(thumbnail.offsetEntry, static_cast<std::uint32_t>(Tiff().Size()));
  Append(jpeg);
  return true;
}

void ExifSegment::Append(std::span<const std::byte> bytes) {
  data_.insert(data_.end(), bytes.begin(), bytes.end());
  Update();
}

}  // namespace ml::metadata
