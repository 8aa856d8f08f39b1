#include "metadata/tiff_raw.h"

#include <string_view>

#include "metadata/ifd.h"
#include "metadata/olympus/olympus_note.h"
#include "metadata/tiff_jpegs.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kShortestNote = 5;  ///< anything shorter stands in the entry

/// Of the maker notes of Minolta and of those that are built alike; listed by the documentation of ExifTool, page
/// "Olympus Tags": start and length of the preview in the note itself, or in its directory of camera settings.
struct PreviewTags {
  std::uint16_t start, length;
};
constexpr PreviewTags kInNote{0x88, 0x89}, kInSettings{0x101, 0x102};
constexpr std::uint16_t kCameraSettings = 0x2020;

struct TiffPlace {
  std::uint64_t base = 0;
  ByteOrder order = ByteOrder::Little;
};

/// Offers the stream which two entries of a directory name; gives the offset of the camera settings, 0 without them.
std::uint32_t OfferFromNote(IfdWalker& walker, std::uint32_t directory, const PreviewTags& tags, std::uint64_t base,
                            TiffJpegs& jpegs) {
  std::uint32_t start = 0, length = 0, settings = 0;
  walker.Walk(directory, [&](const IfdEntry& entry) {
    if (entry.tag == tags.start) start = entry.value;
    if (entry.tag == tags.length) length = entry.value;
    if (entry.tag == kCameraSettings) settings = entry.value;
    return Visit::Continue;
  });
  if (start != 0) jpegs.Offer(base + start, length);
  return settings;
}

void TakeNote(const ByteSource& source, const TiffPlace& tiff, std::uint32_t offset, TiffJpegs& jpegs) {
  const auto position = tiff.base + offset;
  const auto start = source.ReadUpTo(position, kLongestOlympusHead);
  const auto head = ReadOlympusHead(ByteView(start, ByteOrder::Big));
  const auto base = head.order ? position : tiff.base;
  const auto directory = (head.order ? 0 : offset) + head.directory;
  IfdWalker walker(source, head.order.value_or(tiff.order), {.base = base, .followNext = false});
  const auto settings = OfferFromNote(walker, directory, kInNote, base, jpegs);
  OfferFromNote(walker, settings, kInSettings, base, jpegs);
}

/// A broken note or EXIF directory offers nothing.
void TakeMakerNote(const ByteSource& source, const TiffPlace& tiff, TiffJpegs& jpegs) {
  try {
    std::uint32_t note = 0;
    IfdWalker walker(source, tiff.order, {.base = tiff.base, .followNext = false});
    walker.Walk(jpegs.ExifDirectory(), [&](const IfdEntry& entry) {
      if (entry.tag == tiff_tag::kMakerNote && entry.count >= kShortestNote) note = entry.value;
      return Visit::Continue;
    });
    if (note != 0) TakeNote(source, tiff, note, jpegs);
  } catch (ExifException) {
    return;
  }
}

enum class Look { Chain, ChainAndNote };

std::optional<FileRange> LongestJpeg(const ByteSource& source, std::uint64_t base, TiffMagic magic, Look look) {
  const auto header = ReadTiffHeader(source, base);
  if (!header || (magic == TiffMagic::Required && !header->IsTiff())) return std::nullopt;
  TiffJpegs jpegs(source, base, header->order);
  jpegs.TakeChain(header->firstDirectory);
  jpegs.TakeSubDirectories();
  if (look == Look::ChainAndNote) TakeMakerNote(source, {base, header->order}, jpegs);
  return jpegs.Longest();
}

/// What the file header says of the JPEG inside; nothing without such a header.
std::optional<FileRange> RafJpeg(const ByteSource& source) {
  // The header as libopenraw's page on the format describes it; all numbers are big-endian.
  constexpr std::string_view signature = "FUJIFILMCCD-RAW ";
  constexpr std::size_t jpegOffset = 84, jpegLength = 88, size = 92;
  const auto bytes = source.ReadUpTo(0, size);
  const ByteView header(bytes, ByteOrder::Big);
  if (bytes.size() < size || !header.StartsWith(signature)) return std::nullopt;
  return FileRange{header.readLong(jpegOffset), header.readLong(jpegLength)};
}

}  // namespace

std::optional<FileRange> FindNefPreview(const ByteSource& source) {
  const auto header = ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) return std::nullopt;
  TiffJpegs jpegs(source, 0, header->order);
  jpegs.TakeDirectory(header->firstDirectory);
  jpegs.ForgetStreams();
  jpegs.TakeSubDirectories();
  return jpegs.Longest();
}

std::optional<FileRange> FindOrfPreview(const ByteSource& source) {
  return LongestJpeg(source, 0, TiffMagic::Any, Look::ChainAndNote);
}

std::optional<FileRange> FindPefPreview(const ByteSource& source) {
  return LongestJpeg(source, 0, TiffMagic::Required, Look::Chain);
}

std::optional<FileRange> FindMrwPreview(const ByteSource& source) {
  return LongestJpeg(source, kMrwTiffBase, TiffMagic::Required, Look::ChainAndNote);
}

std::optional<FileRange> FindRafPreview(const ByteSource& source) {
  const auto jpeg = RafJpeg(source);
  if (!jpeg) return std::nullopt;
  TiffJpegs jpegs(source, 0, ByteOrder::Big);
  jpegs.Offer(jpeg->position, static_cast<std::uint32_t>(jpeg->size));
  return jpegs.Longest();
}

std::uint64_t FindRafTiffBase(const ByteSource& source) {
  constexpr std::string_view start = "\xff\xd8\xff\xe1", exif = "Exif";
  constexpr std::size_t exifMark = 6, tiff = 12;
  const auto jpeg = RafJpeg(source);
  if (!jpeg) return kRafTiffBase;
  const auto bytes = source.ReadUpTo(jpeg->position, tiff);
  const ByteView head(bytes, ByteOrder::Big);
  return head.StartsWith(start) && head.StartsWith(exif, exifMark) ? jpeg->position + tiff : kRafTiffBase;
}

std::optional<std::uint32_t> ReadTiffOrientation(const ByteSource& source, std::uint64_t base, TiffMagic magic) {
  const auto header = ReadTiffHeader(source, base);
  if (!header || (magic == TiffMagic::Required && !header->IsTiff())) return std::nullopt;
  std::optional<std::uint32_t> orientation;
  try {
    IfdWalker walker(source, header->order, {.base = base, .followNext = false});
    walker.Walk(header->firstDirectory, [&](const IfdEntry& entry) {
      if (entry.tag != tiff_tag::kOrientation) return Visit::Continue;
      orientation = entry.value;
      return Visit::Stop;
    });
  } catch (ExifException) {
    return orientation;
  }
  return orientation;
}

}  // namespace ml::metadata
