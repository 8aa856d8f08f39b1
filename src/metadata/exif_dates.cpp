#include "metadata/exif_dates.h"

#include <array>
#include <string>

#include "metadata/exif_block.h"
#include "metadata/exif_values.h"
#include "metadata/exif_walk.h"
#include "metadata/jpeg_segments.h"
#include "metadata/tiff_tags.h"
#include "platform/dates.h"

namespace ml::metadata {
namespace {

/// The first that is not empty counts.
constexpr std::array<std::uint16_t, 3> kDateTags = {tiff_tag::kDateOriginal, tiff_tag::kDateDigitized, tiff_tag::kDate};

using DateTexts = std::array<std::string, kDateTags.size()>;

/// Walks the first directory and the EXIF directory until the best date is found.
void FindDates(const ByteSource& file, const TiffHeader& header, const ExifWalkRules& rules, DateTexts& texts) {
  IfdWalker walker(file, header.order, rules.ifd0);
  const IfdVisitor visit = [&](const IfdEntry& entry) {
    for (std::size_t i = 0; i < kDateTags.size(); ++i) {
      if (entry.tag == kDateTags[i]) texts[i] = readIFDstring(file, entry, rules.base);
    }
    return texts.front().empty() ? Visit::Continue : Visit::Stop;
  };
  walker.Walk(header.firstDirectory, [&](const IfdEntry& entry) {
    return entry.tag == tiff_tag::kExif ? walker.Walk(entry.value, rules.exif, visit) : visit(entry);
  });
}

std::optional<std::time_t> TimeOf(const DateTexts& texts) {
  for (const auto& text : texts) {
    if (text.empty()) continue;
    const auto fields = platform::ParseDateTime(text);
    return fields ? platform::ToTime(*fields) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::time_t> ReadJpegDate(const ByteSource& file) {
  JpegSegments segments(file);
  auto segment = segments.Next();
  while (segment && !IsExifSegment(segments, *segment)) segment = segments.Next();
  if (!segment) return std::nullopt;
  auto rules = BlockRules();
  rules.base = rules.ifd0.base = rules.exif.base = segment->payload + kExifPrefix;
  const auto header = ReadTiffHeader(file, rules.base);
  if (!header || !header->IsTiff()) return std::nullopt;
  DateTexts texts;
  try {
    FindDates(file, *header, rules, texts);
  } catch (ExifException) {
    return TimeOf(texts);  // what stands in front of the damage holds
  }
  return TimeOf(texts);
}

std::optional<std::time_t> ReadTiffDate(const ByteSource& file) {
  const auto header = ReadTiffHeader(file, 0);
  if (!header || !header->IsTiff()) return std::nullopt;
  DateTexts texts;
  try {
    FindDates(file, *header, FileRules(0), texts);
  } catch (ExifException) {
    return std::nullopt;
  }
  return TimeOf(texts);
}

}  // namespace ml::metadata
