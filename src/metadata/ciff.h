#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// The heap structure of CRW files: a heap ends with the offset of its directory, whose entries are data in
/// the heap, values held in the entry itself, or further heaps.
namespace ml::metadata {

namespace ciff_tag {
inline constexpr std::uint16_t kDescription = 0x0805, kRawData = 0x2005, kPreview = 0x2007, kTimeStamp = 0x180e,
                               kPictureInfo = 0x1810, kImageProperties = 0x300a, kFileNumber = 0x5817;
}

struct CiffRecord {
  std::uint16_t tag = 0;
  std::uint16_t heap = 0;      ///< tag of the heap in which the record stands; 0 in the root
  std::uint64_t position = 0;  ///< of the data in the file; of a value in its entry: of the 8 bytes there
  std::uint32_t size = 0;      ///< bytes of data as the file says, 8 for a value in its entry

  std::uint16_t Number() const { return tag & 0x7ff; }
  bool IsInEntry() const { return (tag & 0xc000) == 0x4000; }
  bool IsShorts() const { return !IsInEntry() && (tag & 0x3800) == 0x1000; }
  /// Heaps of class 0x3000 hold camera settings; class 0x2800 is another kind of heap.
  bool IsSettingsHeap() const { return !IsInEntry() && (tag & 0x3800) == 0x3000; }
  bool IsHeap() const { return IsSettingsHeap() || (!IsInEntry() && (tag & 0x3800) == 0x2800); }
};

/// A heap inside a file, and the order of its numbers.
struct CiffHeap {
  FileRange range;
  ByteOrder order = ByteOrder::Little;
  std::uint16_t tag = 0;  ///< 0: the root
  /// Whether the data of `record` lie in this heap.
  bool Holds(const CiffRecord& record) const;
};

/// The root of a file whose header says `order`; nothing if the header places it behind the end. Throws
/// ExifException::OutOfBounds for a shorter header.
std::optional<CiffHeap> CiffRootHeap(const ByteSource& source, ByteOrder order);
/// The same after the header was checked. Throws UserError if it is not sound.
CiffHeap ReadCiffRootHeap(const ByteSource& source);

inline constexpr std::uint32_t kMaxCiffEntries = 20;  ///< of the root and of the image properties
inline constexpr std::uint32_t kAnyCiffEntries = 0xffff;

/// The directory of `heap`. Throws ExifException: OutOfBounds if it does not lie in the heap or the heap not in
/// the file, LimitExceeded if it has more than `maxEntries`.
std::vector<CiffRecord> ReadCiffDirectory(const ByteSource& source, const CiffHeap& heap, std::uint32_t maxEntries);
/// That of the root, with the sentences of a UserError instead.
std::vector<CiffRecord> ReadCiffRoot(const ByteSource& source, const CiffHeap& root);
/// The first record with this tag, or null.
const CiffRecord* FindCiffTag(const std::vector<CiffRecord>& records, std::uint16_t tag);

/// The records of all heaps that are no heaps themselves, each directory in its order, sub-heaps where their
/// entry stands. A broken heap gives what it has. Limits: 8 heaps deep, 64 heaps, 4,096 records; a heap that was
/// walked before is passed over. Throws UserError for a bad header or root.
std::vector<CiffRecord> ReadCiffRecords(const ByteSource& source);

}  // namespace ml::metadata
