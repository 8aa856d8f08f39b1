#include "metadata/edit/exif_dates_writer.h"

#include <algorithm>
#include <array>
#include <vector>

#include "metadata/byte_writer.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/exif_block.h"
#include "metadata/ifd.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kTextSize = 19;
constexpr std::array<std::uint16_t, 3> kDateTags = {tiff_tag::kDate, tiff_tag::kDateOriginal, tiff_tag::kDateDigitized};

bool IsDateField(const IfdEntry& entry) {
  return std::ranges::find(kDateTags, entry.tag) != kDateTags.end() && entry.Is(IfdType::Ascii) &&
         entry.count == kTextSize + 1;
}

/// Dates of cameras without a clock are blanks, zeros or signs. Anything else means that the entry leads astray.
bool IsText(std::byte byte) {
  const auto code = std::to_integer<unsigned>(byte);
  return code == 0 || (code >= 0x20 && code < 0x7f);
}

std::vector<std::uint64_t> FindDateFields(const ByteSource& file, const TiffHeader& header, std::uint64_t base) {
  std::vector<std::uint64_t> places;
  IfdWalker walker(file, header.order, {.base = base, .followNext = false, .visitCutDirectory = false});
  const IfdVisitor keep = [&](const IfdEntry& entry) {
    if (IsDateField(entry)) places.push_back(base + entry.value);
    return Visit::Continue;
  };
  walker.Walk(header.firstDirectory, [&](const IfdEntry& entry) {
    return entry.tag == tiff_tag::kExif ? walker.Walk(entry.value, keep) : keep(entry);
  });
  return places;
}

}  // namespace

void WriteExifDates(EditedFile& file, std::uint64_t tiffHeader, std::string_view text) {
  if (tiffHeader > file.Size()) return;
  WriteExifDates(file, FileRange{tiffHeader, file.Size() - tiffHeader}, text);
}

void WriteExifDates(EditedFile& file, FileRange tiff, std::string_view text) {
  if (text.size() != kTextSize) return;
  const auto header = ReadTiffHeader(file, tiff.position);
  if (!header) return;
  ByteWriter field(header->order);
  field.Text(text);
  field.Byte(0);
  // All are found before one is written: a directory may stand behind a date that is not one.
  for (const auto place : FindDateFields(file, *header, tiff.position)) {
    if (place + field.Size() > tiff.End()) throw ExifException::OutOfBounds;
    if (std::ranges::all_of(file.Read(place, field.Size()), IsText)) file.Overwrite(place, field.View());
  }
}

void WriteJpegDates(EditedFile& jpeg, std::string_view text) {
  const auto segment = FindExifSegment(jpeg);
  if (!segment || segment->payloadSize < kExifPrefix) return;
  WriteExifDates(jpeg, FileRange{segment->payload + kExifPrefix, segment->payloadSize - kExifPrefix}, text);
}

}  // namespace ml::metadata
