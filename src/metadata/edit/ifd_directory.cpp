#include "metadata/edit/ifd_directory.h"

#include <algorithm>

namespace ml::metadata {

const IfdEntry* IfdDirectory::Find(std::uint16_t tag) const {
  const auto found = std::ranges::find(entries, tag, &IfdEntry::tag);
  return found == entries.end() ? nullptr : &*found;
}

FileRange IfdValueRange(const IfdDirectory& directory, std::size_t index) {
  auto entry = directory.entries[index];
  entry.position = directory.EntryPosition(index);
  return IfdValueRange(entry, directory.base);
}

void PutIfdEntry(ByteWriter& out, const IfdEntry& entry) {
  out.Short(entry.tag);
  out.Short(entry.type);
  out.Long(entry.count);
  out.Long(entry.rawValue);
}

void PutIfdDirectory(ByteWriter& out, std::span<const IfdEntry> entries, std::uint32_t next) {
  out.Short(static_cast<std::uint16_t>(entries.size()));
  for (const auto& entry : entries) PutIfdEntry(out, entry);
  out.Long(next);
}

IfdDirectory ReadIfdDirectory(const ByteSource& source, ByteOrder order, std::uint64_t base, std::uint32_t offset) {
  IfdDirectory directory{.order = order, .base = base, .position = base + offset};
  const std::size_t count = source.ReadNumber(directory.position, 2, order);
  const auto bytes = source.Read(directory.position + 2, count * kIfdEntrySize);
  const ByteView view(bytes, order);
  for (std::size_t i = 0; i < count; ++i) directory.entries.push_back(ReadIfdEntry(view, i));
  directory.next = ReadIfdLink(source, order, directory.EntryPosition(count));
  return directory;
}

IfdDirectory ReadFirstDirectory(const ByteSource& source, std::uint64_t base, TiffMagic magic) {
  const auto header = ReadTiffHeader(source, base);
  if (!header || (magic == TiffMagic::Required && !header->IsTiff())) throw ExifException::BadHeader;
  return ReadIfdDirectory(source, header->order, base, header->firstDirectory);
}

}  // namespace ml::metadata
