#include "metadata/edit/orientation_writer.h"

#include "metadata/byte_writer.h"
#include "metadata/exif_block.h"
#include "metadata/ifd.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::uint16_t kSignedShort = 8;
constexpr std::uint64_t kValueInEntry = 8;

/// Bytes of the value in the entry; 0 if it is no number that could be an orientation.
std::uint32_t WidthOf(const IfdEntry& entry) {
  if (entry.count != 1) return 0;
  if (entry.Is(IfdType::Short) || entry.type == kSignedShort) return 2;
  return entry.Is(IfdType::Long) ? 4 : 0;
}

}  // namespace

std::optional<OrientationPlace> FindTiffOrientation(const ByteSource& file, FileRange tiff) {
  const auto header = ReadTiffHeader(file, tiff.position);
  if (!header) return std::nullopt;
  std::optional<OrientationPlace> found;
  try {
    IfdWalker walker(file, header->order, {.base = tiff.position});
    walker.Walk(header->firstDirectory, [&](const IfdEntry& entry) {
      const auto width = entry.tag == tiff_tag::kOrientation ? WidthOf(entry) : 0;
      const auto position = entry.position + kValueInEntry;
      if (width == 0 || position + 4 > tiff.End()) return Visit::Continue;
      found = {position, width, header->order, file.ReadNumber(position, width, header->order)};
      return Visit::Stop;
    });
  } catch (ExifException) {
    return found;
  }
  return found;
}

std::optional<OrientationPlace> FindExifOrientation(const ByteSource& jpeg) {
  JpegSegments segments(jpeg);
  for (int i = 0; i < kMaxExifBlocks; ++i) {
    const auto block = NextExifBlock(segments);
    if (!block) break;
    if (const auto place = FindTiffOrientation(jpeg, {block->position, block->tiff.size()})) return place;
  }
  return std::nullopt;
}

void WriteOrientation(EditedFile& file, const OrientationPlace& place, std::uint32_t value) {
  ByteWriter bytes(place.order);
  place.width == 2 ? bytes.Short(static_cast<std::uint16_t>(value)) : bytes.Long(value);
  file.Overwrite(place.position, bytes.View());
}

std::uint32_t OrientationOfDegrees(int degrees) {
  switch (degrees) {
    case 90:
      return 6;
    case 180:
      return 3;
    case 270:
      return 8;
    default:
      return 1;
  }
}

bool WriteOrientationToExif(EditedFile& jpeg, int degrees) {
  const auto place = FindExifOrientation(jpeg);
  if (place) WriteOrientation(jpeg, *place, OrientationOfDegrees(degrees));
  return place.has_value();
}

}  // namespace ml::metadata
