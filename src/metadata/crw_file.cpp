#include "metadata/crw_file.h"

#include "metadata/ciff.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

using platform::UserError;

constexpr std::uint64_t kRotationOffset = 12;  ///< in the picture information
constexpr std::uint64_t kStitchOffset = 44;
constexpr std::uint64_t kWhiteBalanceOffset = 14;

struct Properties {
  CiffHeap heap;
  std::vector<CiffRecord> records;
};

/// The directory of the image properties; nothing if the root has none.
std::optional<Properties> ReadProperties(const ByteSource& source) {
  const auto root = ReadCiffRootHeap(source);
  const auto entries = ReadCiffRoot(source, root);
  const auto* entry = FindCiffTag(entries, ciff_tag::kImageProperties);
  if (entry == nullptr) return std::nullopt;
  if (entry->position > source.Size()) throw UserError(messages::kCrwSeek);
  const CiffHeap heap{{entry->position, entry->size}, root.order, entry->tag};
  try {
    return Properties{heap, ReadCiffDirectory(source, heap, kMaxCiffEntries)};
  } catch (ExifException reason) {
    throw UserError(reason == ExifException::LimitExceeded ? messages::kCrwEntries : messages::kCrwPictureData);
  }
}

/// A number of `width` bytes at `offset` in the record; nothing if the record is too short for it.
std::optional<std::uint32_t> NumberAt(const ByteSource& source, ByteOrder order, const CiffRecord& record,
                                      std::uint64_t offset, std::size_t width) {
  if (offset + width > record.size) return std::nullopt;
  try {
    return source.ReadNumber(record.position + offset, width, order);
  } catch (ExifException) {
    return std::nullopt;
  }
}

void TakeBasic(const ByteSource& source, const CiffRecord& record, CrwBasics& basics) {
  const auto longAt = [&](std::uint64_t offset) { return NumberAt(source, basics.order, record, offset, 4); };
  if (record.tag == ciff_tag::kFileNumber && !basics.fileNumber) {
    basics.fileNumber = longAt(0);
  } else if (record.tag == ciff_tag::kPictureInfo && !basics.rotation) {
    if (const auto value = longAt(kRotationOffset)) basics.rotation = static_cast<std::int32_t>(*value);
    basics.rotationPosition = record.position + kRotationOffset;
  } else if (record.tag == ciff_tag::kTimeStamp && !basics.time) {
    const auto seconds = longAt(0);
    if (!seconds) return;
    basics.time = {*seconds, static_cast<std::int32_t>(longAt(4).value_or(0)), longAt(8).value_or(0), record.position};
  }
}

void TakeSetting(const ByteSource& source, ByteOrder order, const CiffRecord& record, CrwSettings& settings) {
  if (!record.IsShorts()) return;
  const auto take = [&](std::optional<std::uint16_t>& field, std::uint64_t offset) {
    const auto value = NumberAt(source, order, record, offset, 2);
    if (value && !field) field = static_cast<std::uint16_t>(*value);
  };
  switch (record.Number()) {
    case 0x2a:
      return take(settings.whiteBalance, kWhiteBalanceOffset);
    case 0x38:
      return take(settings.stitchShot, kStitchOffset);
    case 0xae:
      return take(settings.colorTemperature, 0);
    case 0xb4:
      return take(settings.colorSpace, 0);
    default:
      return;
  }
}

}  // namespace

CrwBasics ReadCrwBasics(const ByteSource& source) {
  CrwBasics basics;
  const auto properties = ReadProperties(source);
  if (!properties) return basics;
  basics.order = properties->heap.order;
  for (const auto& record : properties->records) TakeBasic(source, record, basics);
  return basics;
}

CrwSettings ReadCrwSettings(const ByteSource& source) {
  CrwSettings settings;
  const auto properties = ReadProperties(source);
  if (!properties) return settings;
  const auto& heap = properties->heap;
  for (const auto& entry : properties->records) {
    if (!entry.IsSettingsHeap() || !heap.Holds(entry)) continue;
    try {
      const CiffHeap inner{{entry.position, entry.size}, heap.order, entry.tag};
      for (const auto& record : ReadCiffDirectory(source, inner, kAnyCiffEntries)) {
        TakeSetting(source, heap.order, record, settings);
      }
    } catch (ExifException) {
      continue;  // costs only this heap
    }
  }
  return settings;
}

std::optional<FileRange> FindCrwPreview(const ByteSource& source) {
  try {
    // Kept: numbers are little-endian whatever the header says, and the root may have any number of entries.
    const auto root = CiffRootHeap(source, ByteOrder::Little);
    if (!root) return std::nullopt;
    const auto entries = ReadCiffDirectory(source, *root, kAnyCiffEntries);
    const auto* entry = FindCiffTag(entries, ciff_tag::kPreview);
    if (entry == nullptr) return std::nullopt;
    const auto range = CutToSource({entry->position, entry->size}, source);
    return range.size == 0 ? std::nullopt : std::optional(range);
  } catch (ExifException) {
    return std::nullopt;
  }
}

}  // namespace ml::metadata
