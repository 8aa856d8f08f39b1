#include "metadata/edit/ciff_file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "metadata/byte_writer.h"
#include "metadata/ciff.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

using platform::UserError;

constexpr std::size_t kEntrySize = 10;
constexpr ByteOrder kOrder = ByteOrder::Little;

}  // namespace

CiffFile::CiffFile(const ByteSource& source) : source_(source) {
  constexpr std::size_t headerSize = 26, smallestHeap = 6;
  const auto header = source.ReadUpTo(0, headerSize);
  const ByteView view(header, kOrder);
  if (!view.StartsWith("II")) throw UserError(messages::kCiffAlignment);
  if (header.size() < headerSize) throw UserError(messages::kCiffRead);
  heapOffset_ = view.readLong(2);
  if (heapOffset_ > source.Size() || source.Size() - heapOffset_ < smallestHeap) throw UserError(messages::kCiffSeek);
  try {
    directory_ = source.ReadNumber(source.Size() - 4, 4, kOrder);
    const auto directory = heapOffset_ + directory_;
    if (directory > source.Size() - smallestHeap) throw UserError(messages::kCiffSeek);
    const auto count = source.ReadNumber(directory, 2, kOrder);
    if (count > kMaxCiffEntries) throw UserError(messages::kCiffEntries);
    const auto bytes = source.Read(directory + 2, count * kEntrySize);
    const ByteView entries(bytes, kOrder);
    for (std::size_t at = 0; at < entries.Size(); at += kEntrySize) {
      entries_.push_back({entries.readShort(at), entries.readLong(at + 2), entries.readLong(at + 6)});
    }
  } catch (ExifException) {
    throw UserError(messages::kCiffRead);
  }
}

std::optional<FileRange> CiffFile::FindEntry(std::uint16_t tag) const {
  const auto found = std::ranges::find(entries_, tag, &Entry::tag);
  if (found == entries_.end() || !found->HasData()) return std::nullopt;
  return FileRange{heapOffset_ + found->offset, found->size};
}

std::vector<std::byte> CiffFile::DataOf(const Entry& entry) const try {
  return source_.Read(heapOffset_ + entry.offset, entry.size);
} catch (ExifException) {
  throw UserError(messages::kCiffRead);
}

CiffSettings CiffFile::CollectSettings() const {
  CiffSettings settings;
  const auto entry = std::ranges::find(entries_, ciff_tag::kImageProperties, &Entry::tag);
  if (entry == entries_.end()) return settings;
  auto heap = DataOf(*entry);
  PatchSettings(heap, settings, CiffPatch::Collect);
  return settings;
}

std::vector<std::byte> CiffFile::NewDataOf(const Entry& entry, const CiffChanges& changes) const {
  const bool isPreview = entry.tag == ciff_tag::kPreview;
  if (isPreview && changes.preview) return {changes.preview->begin(), changes.preview->end()};
  if (changes.rawSource != nullptr && (isPreview || entry.tag == ciff_tag::kRawData)) {
    const auto& other = *changes.rawSource;
    const auto found = std::ranges::find(other.entries_, entry.tag, &Entry::tag);
    if (found != other.entries_.end()) return other.DataOf(*found);
  }
  auto data = DataOf(entry);
  if (entry.tag == ciff_tag::kImageProperties && changes.settings != nullptr) {
    auto settings = *changes.settings;
    PatchSettings(data, settings, CiffPatch::Apply);
  }
  return data;
}

/// What stands behind root and data, such as the blocks that editors append; the last four bytes are the root's place.
std::vector<std::byte> CiffFile::Tail() const {
  auto begin = heapOffset_ + directory_ + 2 + entries_.size() * kEntrySize;
  for (const auto& entry : entries_) {
    if (entry.HasData()) begin = std::max(begin, heapOffset_ + entry.offset + entry.size);
  }
  const auto end = source_.Size() - 4;
  return begin < end ? source_.ReadUpTo(begin, static_cast<std::size_t>(end - begin)) : std::vector<std::byte>{};
}

void CiffFile::Write(EditedFile& file, const CiffChanges& changes) const {
  // Entries that share their data are no camera's work; they would make a small file a huge one.
  std::uint64_t told = 0;
  for (const auto& entry : entries_) told += entry.HasData() ? entry.size : 0;
  if (told > source_.Size()) throw UserError(messages::kCiffRead);

  ByteWriter heap(kOrder), directory(kOrder);
  directory.Short(static_cast<std::uint16_t>(entries_.size()));
  for (const auto& entry : entries_) {
    auto size = entry.size, offset = entry.offset;
    if (entry.HasData()) {
      const auto data = NewDataOf(entry, changes);
      size = static_cast<std::uint32_t>(data.size());
      offset = static_cast<std::uint32_t>(heap.Size());
      heap.Bytes(data);
      if (heap.Size() > std::numeric_limits<std::uint32_t>::max()) throw UserError(messages::kCiffWrite);
    }
    directory.Short(entry.tag);
    directory.Long(size);
    directory.Long(offset);
  }
  const auto place = static_cast<std::uint32_t>(heap.Size());
  const auto tail = Tail();
  const auto tailPlace = place + directory.Size();
  heap.Bytes(directory.View());
  heap.Bytes(tail);
  // Whoever appended something left the root's place before it too.
  if (tail.size() >= 4 && ByteView(tail, kOrder).readLong(0) == directory_) heap.PatchLong(tailPlace, place);
  heap.Long(place);
  file.Replace({heapOffset_, file.Size() - heapOffset_}, heap.View());
}

}  // namespace ml::metadata
