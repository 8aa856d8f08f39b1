#include "metadata/edit/ifd_entry_writer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/edit/ifd_directory.h"

namespace ml::metadata {
namespace {

constexpr std::uint64_t kFirstDirectoryPointer = 4;

/// A single short stands first in either byte order and leaves the rest of the value field empty.
void PutValue(ByteWriter& out, bool isShort, std::uint32_t value) {
  if (isShort) {
    out.Short(static_cast<std::uint16_t>(value));
    out.Short(0);
  } else {
    out.Long(value);
  }
}

void PutField(ByteWriter& out, const IfdField& field) {
  out.Short(field.tag);
  out.Short(static_cast<std::uint16_t>(field.type));
  out.Long(field.count);
  PutValue(out, field.type == IfdType::Short && field.count == 1, field.value);
}

std::vector<std::byte> LongerDirectory(const IfdDirectory& directory, const IfdField& field) {
  ByteWriter out(directory.order);
  out.Short(static_cast<std::uint16_t>(directory.entries.size() + 1));
  bool placed = false;
  for (const auto& entry : directory.entries) {
    if (!placed && entry.tag > field.tag) {
      PutField(out, field);
      placed = true;
    }
    PutIfdEntry(out, entry);
  }
  if (!placed) PutField(out, field);
  out.Long(directory.next);
  return out.Take();
}

}  // namespace

void RequireTiffRoom(const EditedFile& file, std::uint64_t bytes) {
  constexpr std::uint64_t padding = 2;
  if (file.Size() + padding + bytes > std::numeric_limits<std::uint32_t>::max()) throw ExifException::LimitExceeded;
}

std::uint32_t AppendTiffData(EditedFile& file, std::span<const std::byte> bytes) {
  RequireTiffRoom(file, bytes.size());
  const auto offset = file.Size() + file.Size() % 2;
  if (offset > file.Size()) file.Append(std::array{std::byte{0}});
  file.Append(bytes);
  return static_cast<std::uint32_t>(offset);
}

void UpdateIfdEntry(EditedFile& file, const IfdField& field, TiffMagic magic) {
  const auto directory = ReadFirstDirectory(file, 0, magic);
  if (directory.Find(field.tag) != nullptr) {
    ByteWriter out(directory.order);
    PutField(out, field);
    // Readers differ in which of several equal tags they believe.
    for (std::size_t i = 0; i < directory.entries.size(); ++i) {
      if (directory.entries[i].tag == field.tag) file.Overwrite(directory.EntryPosition(i), out.View());
    }
    return;
  }
  if (directory.entries.size() >= kMaxFirstEntries) throw ExifException::DirectoryFull;
  ByteWriter pointer(directory.order);
  pointer.Long(AppendTiffData(file, LongerDirectory(directory, field)));
  file.Overwrite(kFirstDirectoryPointer, pointer.View());
}

void RemoveIfdEntry(EditedFile& file, std::uint16_t tag) {
  auto directory = ReadFirstDirectory(file, 0, TiffMagic::Required);
  if (std::erase_if(directory.entries, [&](const IfdEntry& entry) { return entry.tag == tag; }) == 0) return;
  ByteWriter out(directory.order);
  PutIfdDirectory(out, directory.entries, directory.next);
  file.Overwrite(directory.position, out.View());
}

bool OverwriteIfdNumber(EditedFile& file, std::uint64_t base, std::uint16_t tag, std::uint32_t value) {
  const auto directory = ReadFirstDirectory(file, base, TiffMagic::Required);
  const auto* entry = directory.Find(tag);
  if (entry == nullptr) return false;
  ByteWriter out(directory.order);
  PutValue(out, entry->Is(IfdType::Short), value);
  const auto index = static_cast<std::size_t>(std::distance(directory.entries.data(), entry));
  file.Overwrite(directory.EntryPosition(index) + 8, out.View());
  return true;
}

}  // namespace ml::metadata
