#include "metadata/edit/iptc_tiff.h"

#include <optional>
#include <vector>

#include "metadata/edit/ifd_directory.h"
#include "metadata/edit/ifd_entry_writer.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

using tiff_tag::kIptc;

constexpr std::uint64_t kInEntry = 4;

struct OldData {
  IfdType type = IfdType::Long;
  std::size_t entries = 0, allEntries = 0;  ///< with the tag, and of the whole directory
  std::optional<FileRange> range{};         ///< if the data stand outside of the directory and inside the file
};

bool CountsBytes(IfdType type) { return type == IfdType::Byte || type == IfdType::Undefined; }

OldData FindOldData(const EditedFile& file) {
  OldData old;
  const auto directory = ReadFirstDirectory(file, 0, TiffMagic::Required);
  // Readers saw nothing of such a file: what it holds would be lost.
  if (directory.entries.size() > kMaxFirstEntries) throw ExifException::DirectoryFull;
  const auto directoryEnd = directory.EntryPosition(directory.entries.size());
  old.allEntries = directory.entries.size();
  for (std::size_t i = 0; i < directory.entries.size(); ++i) {
    if (directory.entries[i].tag != kIptc || ++old.entries > 1) continue;
    const auto type = static_cast<IfdType>(directory.entries[i].type);
    if (CountsBytes(type)) old.type = type;  // any other is written as longs, as most programs do
    const auto range = IfdValueRange(directory, i);
    const bool apart = range.End() <= directory.position || range.position >= directoryEnd;
    if (range.size > kInEntry && apart && range == CutToSource(range, file)) old.range = range;
  }
  return old;
}

void ZeroOut(EditedFile& file, const OldData& old) {
  if (old.range) file.Overwrite(old.range->position, std::vector<std::byte>(old.range->size));
}

}  // namespace

void WriteTiffIptc(EditedFile& file, const IptcBlock& block) {
  auto bytes = BuildIptcBlock(block, IptcCarrier::Bare);
  const auto old = FindOldData(file);
  if (bytes.empty()) {
    RemoveIfdEntry(file, kIptc);
    return ZeroOut(file, old);
  }
  if (old.entries == 0 && old.allEntries == kMaxFirstEntries) throw ExifException::DirectoryFull;
  IfdField field{.tag = kIptc, .type = old.type, .count = static_cast<std::uint32_t>(bytes.size())};
  if (old.type == IfdType::Long) field.count /= 4;
  if (old.range && bytes.size() <= old.range->size) {
    bytes.resize(old.range->size);
    file.Overwrite(old.range->position, bytes);
    field.value = static_cast<std::uint32_t>(old.range->position);
  } else {
    // The directory may have to follow, with one entry more and a link.
    RequireTiffRoom(file, bytes.size() + 2 + (old.allEntries + 1) * kIfdEntrySize + 4);
    const bool isLast = old.range && old.range->End() == file.Size();
    field.value = isLast ? static_cast<std::uint32_t>(old.range->position) : AppendTiffData(file, bytes);
    if (isLast) file.Replace(*old.range, bytes);
  }
  if (old.entries > 1) RemoveIfdEntry(file, kIptc);  // readers would take the data as often
  UpdateIfdEntry(file, field);
}

}  // namespace ml::metadata
