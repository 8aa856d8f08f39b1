#include "metadata/ciff.h"

#include <set>
#include <utility>

#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

using platform::UserError;

constexpr std::size_t kHeaderSize = 26;
constexpr std::size_t kEntrySize = 10;
constexpr int kMaxDepth = 8;
constexpr std::size_t kMaxRecords = 4096;
constexpr std::size_t kMaxHeaps = 64;  ///< the heaps of a damaged file may overlap, and each hold thousands of others

class HeapWalk {
 public:
  HeapWalk(const ByteSource& source, std::vector<CiffRecord>& found) : source_(source), found_(found) {}

  void Take(const CiffHeap& heap, const std::vector<CiffRecord>& records, int depth) {
    for (const auto& record : records) {
      if (found_.size() >= kMaxRecords) return;
      if (record.IsHeap()) {
        if (depth < kMaxDepth && heap.Holds(record))
          Descend({{record.position, record.size}, heap.order, record.tag}, depth + 1);
      } else {
        found_.push_back(record);
      }
    }
  }

 private:
  void Descend(const CiffHeap& heap, int depth) {
    if (visited_.size() >= kMaxHeaps || !visited_.insert({heap.range.position, heap.range.size}).second) return;
    try {
      Take(heap, ReadCiffDirectory(source_, heap, kAnyCiffEntries), depth);
    } catch (ExifException) {
      return;  // costs only this heap
    }
  }

  const ByteSource& source_;
  std::vector<CiffRecord>& found_;
  std::set<std::pair<std::uint64_t, std::uint64_t>> visited_;
};

}  // namespace

bool CiffHeap::Holds(const CiffRecord& record) const {
  return record.position >= range.position && record.size <= range.size &&
         record.position - range.position <= range.size - record.size;
}

std::optional<CiffHeap> CiffRootHeap(const ByteSource& source, ByteOrder order) {
  const std::uint64_t start = source.ReadNumber(2, 4, order);
  if (start > source.Size()) return std::nullopt;
  return CiffHeap{{start, source.Size() - start}, order, 0};
}

CiffHeap ReadCiffRootHeap(const ByteSource& source) {
  const auto bytes = source.ReadUpTo(0, kHeaderSize);
  if (bytes.size() < kHeaderSize) throw UserError(messages::kCrwHeaderCut);
  const ByteView header(bytes, ByteOrder::Big);
  const bool little = header.StartsWith("II");
  if (!little && !header.StartsWith("MM")) throw UserError(messages::kCrwAlignment);
  const auto root = CiffRootHeap(source, little ? ByteOrder::Little : ByteOrder::Big);
  if (!root) throw UserError(messages::kCrwHeaderCut);
  return *root;
}

std::vector<CiffRecord> ReadCiffDirectory(const ByteSource& source, const CiffHeap& heap, std::uint32_t maxEntries) {
  const auto [start, size] = heap.range;
  if (size < 6 || size > source.Size() || start > source.Size() - size) throw ExifException::OutOfBounds;
  const std::uint64_t directory = source.ReadNumber(start + size - 4, 4, heap.order);
  if (directory > size - 2) throw ExifException::OutOfBounds;
  const auto count = source.ReadNumber(start + directory, 2, heap.order);
  if (count > maxEntries) throw ExifException::LimitExceeded;
  if (count * kEntrySize > size - 2 - directory) throw ExifException::OutOfBounds;
  const auto position = start + directory + 2;
  const auto bytes = source.Read(position, count * kEntrySize);
  const ByteView entries(bytes, heap.order);
  std::vector<CiffRecord> records;
  for (std::size_t i = 0; i < count; ++i) {
    const auto entry = entries.Sub(i * kEntrySize, kEntrySize);
    CiffRecord record{.tag = entry.readShort(0), .heap = heap.tag, .size = entry.readLong(2)};
    record.position = start + entry.readLong(6);
    if (record.IsInEntry()) {
      record.position = position + i * kEntrySize + 2;
      record.size = 8;
    }
    records.push_back(record);
  }
  return records;
}

std::vector<CiffRecord> ReadCiffRoot(const ByteSource& source, const CiffHeap& root) {
  try {
    return ReadCiffDirectory(source, root, kMaxCiffEntries);
  } catch (ExifException reason) {
    throw UserError(reason == ExifException::LimitExceeded ? messages::kCrwEntries : messages::kCrwHeaderCut);
  }
}

const CiffRecord* FindCiffTag(const std::vector<CiffRecord>& records, std::uint16_t tag) {
  const auto found = std::ranges::find(records, tag, &CiffRecord::tag);
  return found == records.end() ? nullptr : &*found;
}

std::vector<CiffRecord> ReadCiffRecords(const ByteSource& source) {
  const auto root = ReadCiffRootHeap(source);
  std::vector<CiffRecord> records;
  HeapWalk(source, records).Take(root, ReadCiffRoot(source, root), 1);
  return records;
}

}  // namespace ml::metadata
