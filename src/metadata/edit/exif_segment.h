#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "metadata/byte_view.h"
#include "metadata/edit/exif_layout.h"
#include "metadata/exif_block.h"

namespace ml::metadata {

/// An EXIF segment in memory that is being edited, from its length field on. Nothing in it ever moves: what does not
/// fit where it was goes behind everything else, so that private notes, whose offsets nobody knows, stay true.
class ExifSegment {
 public:
  /// The length field is made to fit the bytes. Throws UserError with the reason if this is no EXIF segment.
  explicit ExifSegment(std::vector<std::byte> segment);

  const std::vector<std::byte>& Data() const { return data_; }
  /// What follows the length field, as a segment is written.
  std::span<const std::byte> Payload() const { return std::span(data_).subspan(2); }
  ByteView Tiff() const { return ByteView(data_, order_).From(kExifSegmentHead); }
  /// Of the present content. Positions count from the TIFF header.
  const ExifLayout& Layout() const { return layout_; }

  /// These count from the TIFF header, too. They throw UserError naming themselves at the end of the segment.
  std::uint16_t readShort(std::uint64_t offset) const;
  std::uint32_t readLong(std::uint64_t offset) const;
  void writeShort(std::uint64_t offset, std::uint16_t value);
  void writeLong(std::uint64_t offset, std::uint32_t value);
  /// A number in the value field of an entry, a short or a long as its type says; other types are left alone.
  void WriteNumber(const IfdEntry& entry, std::uint32_t value);
  /// Overwrites the field with `bytes` and zeros behind them. `bytes` must fit.
  void FillField(FileRange field, std::span<const std::byte> bytes);

  bool HasThumbnail() const { return layout_.thumbnail.has_value(); }
  /// Appends a directory that describes a thumbnail, of no bytes yet, to the chain. False, with nothing changed, if the
  /// chain cannot be followed to its end or the segment is full.
  bool AddThumbnailDirectory();
  /// How many bytes a thumbnail may have.
  std::uint64_t ThumbnailRoom() const;
  /// In the place of the old one, or behind everything where that is too small or not a place of its own. False, with
  /// nothing changed, if there is no room, no directory that describes it, or a structure that cannot be understood.
  bool SetThumbnail(std::span<const std::byte> jpeg);

 private:
  bool ThumbnailIsLast() const;
  /// Whether something would find its value in bytes that are added: data that go on in another segment, or were cut.
  bool ReadsBehindEnd(std::uint64_t added) const;
  void Append(std::span<const std::byte> bytes);
  void Update();

  std::vector<std::byte> data_;
  ByteOrder order_ = ByteOrder::Little;
  ExifLayout layout_;
};

}  // namespace ml::metadata
