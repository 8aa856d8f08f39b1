#include "metadata/tiff_facts.h"

#include "metadata/ifd.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

namespace tag = tiff_tag;

constexpr std::uint32_t kMaxList = 1'000'000;  ///< a strip for every row of the highest picture shown
constexpr std::uint32_t kMaxProfile = std::uint32_t{8} << 20;

/// Shorts or longs. Empty if they are of another type, too many or not in the file.
std::vector<std::uint32_t> ReadList(const ByteSource& source, ByteOrder order, const IfdEntry& entry) {
  if ((!entry.Is(IfdType::Short) && !entry.Is(IfdType::Long)) || entry.count > kMaxList) return {};
  auto values = ReadIfdNumbers(source, order, entry, IfdValueRange(entry, 0), kMaxList);
  if (values.size() != entry.count) values.clear();
  return values;
}

struct Lists {
  std::optional<IfdEntry> bitsPerSample, stripOffsets, stripByteCounts;
};

void Take(const IfdEntry& entry, TiffFacts& facts, Lists& lists) {
  struct Single {
    std::uint16_t tag;
    std::uint32_t TiffFacts::*field;
  };
  static constexpr Single singles[] = {
      {tag::kWidth, &TiffFacts::width},
      {tag::kHeight, &TiffFacts::height},
      {tag::kCompression, &TiffFacts::compression},
      {tag::kPhotometric, &TiffFacts::photometric},
      {tag::kSamplesPerPixel, &TiffFacts::samplesPerPixel},
      {tag::kRowsPerStrip, &TiffFacts::rowsPerStrip},
      {tag::kPlanes, &TiffFacts::planes},
  };
  for (const auto& single : singles) {
    if (single.tag == entry.tag) facts.*single.field = entry.value;
  }
  if (entry.tag == tag::kBitsPerSample) lists.bitsPerSample = entry;
  if (entry.tag == tag::kStripOffsets) lists.stripOffsets = entry;
  if (entry.tag == tag::kStripByteCounts) lists.stripByteCounts = entry;
  if (entry.tag == tag::kTileWidth) facts.tiled = true;
}

}  // namespace

std::optional<TiffFacts> ReadTiffFacts(const ByteSource& source) {
  const auto header = ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) return std::nullopt;
  TiffFacts facts{.order = header->order, .bitsPerSample = {}, .stripOffsets = {}, .stripByteCounts = {}};
  Lists lists;
  try {
    IfdWalker walker(source, header->order, {.followNext = false, .visitCutDirectory = false});
    walker.Walk(header->firstDirectory, [&](const IfdEntry& entry) {
      Take(entry, facts, lists);
      return Visit::Continue;
    });
  } catch (ExifException) {
    return std::nullopt;
  }
  facts.bitsPerSample.assign(1, 1);
  if (lists.bitsPerSample) facts.bitsPerSample = ReadList(source, header->order, *lists.bitsPerSample);
  if (lists.stripOffsets) facts.stripOffsets = ReadList(source, header->order, *lists.stripOffsets);
  if (lists.stripByteCounts) facts.stripByteCounts = ReadList(source, header->order, *lists.stripByteCounts);
  return facts;
}

std::optional<std::vector<std::byte>> ReadTiffIccProfile(const ByteSource& source) {
  const auto header = ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) return std::nullopt;
  try {
    std::optional<IfdEntry> profile;
    IfdWalker walker(source, header->order, {.followNext = false});
    walker.Walk(header->firstDirectory, [&](const IfdEntry& entry) {
      if (entry.tag != tag::kIccProfile) return Visit::Continue;
      profile = entry;
      return Visit::Stop;
    });
    if (!profile || profile->count <= 4 || profile->count > kMaxProfile) return std::nullopt;
    return source.Read(profile->value, profile->count);
  } catch (ExifException) {
    return std::nullopt;
  }
}

}  // namespace ml::metadata
