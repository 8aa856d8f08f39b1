#include "metadata/edit/multi_picture.h"

#include <optional>
#include <string_view>

#include "metadata/byte_writer.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/ifd.h"

namespace ml::metadata {
namespace {

using namespace std::string_view_literals;

constexpr auto kName = "MPF\0"sv;
constexpr std::uint16_t kPictures = 0xb002;
constexpr std::uint32_t kRecordSize = 16, kSizeInRecord = 4, kOffsetInRecord = 8;
constexpr std::uint32_t kMaxPictures = 256;

struct PictureList {
  std::uint64_t base = 0;  ///< what offsets count from
  ByteOrder order = ByteOrder::Big;
  std::uint64_t records = 0;
  std::uint32_t count = 0;
};

std::optional<PictureList> FindList(const ByteSource& jpeg) {
  JpegSegments segments(jpeg);
  auto segment = segments.Next();
  while (segment && !(segment->marker == jpeg_marker::kApp2 && segments.PayloadStartsWith(*segment, kName))) {
    segment = segments.Next();
  }
  if (!segment) return std::nullopt;
  PictureList list{.base = segment->payload + kName.size()};
  const auto header = ReadTiffHeader(jpeg, list.base);
  if (!header) return std::nullopt;
  list.order = header->order;
  IfdWalker walker(jpeg, header->order, {.base = list.base, .followNext = false, .visitCutDirectory = false});
  walker.Walk(header->firstDirectory, [&](const IfdEntry& entry) {
    if (entry.tag != kPictures) return Visit::Continue;
    list.records = list.base + entry.value;
    list.count = entry.count / kRecordSize;
    return Visit::Stop;
  });
  const bool inside = list.records + std::uint64_t{list.count} * kRecordSize <= segment->End();
  return inside && list.count <= kMaxPictures ? std::optional(list) : std::nullopt;
}

void WriteLong(EditedFile& file, std::uint64_t position, std::uint64_t value, ByteOrder order) {
  ByteWriter bytes(order);
  bytes.Long(static_cast<std::uint32_t>(value));
  file.Overwrite(position, bytes.View());
}

}  // namespace

void RealignMultiPicture(EditedFile& jpeg) try {
  const auto& original = jpeg.Original();
  const auto before = CompressedData(original), after = CompressedData(jpeg);
  if (before.size != after.size || before.position == after.position) return;
  const auto old = FindList(original), now = FindList(jpeg);
  if (!old || !now || old->count != now->count) return;
  for (std::uint32_t i = 0; i < now->count; ++i) {
    const auto record = now->records + std::uint64_t{i} * kRecordSize;
    const auto size = jpeg.ReadNumber(record + kSizeInRecord, 4, now->order);
    const auto offset = jpeg.ReadNumber(record + kOffsetInRecord, 4, now->order);
    // The first picture is the file's own: it begins with the file and is as much larger as its segments are.
    if (offset == 0 && size != 0) {
      WriteLong(jpeg, record + kSizeInRecord, size + after.position - before.position, now->order);
    }
    const auto begins = old->base + offset;
    if (offset == 0 || begins < before.position) continue;
    const auto moved = begins + after.position - before.position - now->base;
    if (moved != offset) WriteLong(jpeg, record + kOffsetInRecord, moved, now->order);
  }
} catch (ExifException) {
  return;  // a list that cannot be read is nobody's guide
}

}  // namespace ml::metadata
