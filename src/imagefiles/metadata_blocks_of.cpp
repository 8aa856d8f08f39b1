#include "imagefiles/metadata_blocks_of.h"

#include <algorithm>
#include <utility>

#include "imagefiles/embedded_profile.h"
#include "imagefiles/profile_name.h"
#include "imaging/colour/colour_profile.h"
#include "metadata/byte_source.h"
#include "metadata/edit/exif_block_builder.h"
#include "metadata/exif_block.h"
#include "metadata/exif_text.h"
#include "metadata/ifd.h"
#include "metadata/jpeg_segments.h"
#include "metadata/tiff_tags.h"
#include "platform/companion_set.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace ml::imagefiles {
namespace {

using imaging::MetadataBlocks;
using metadata::IfdEntry;

constexpr std::size_t kLongestNote = std::size_t{1} << 20;
constexpr std::uint32_t kShortestSegment = 8;  ///< payload of one that is worth taking along
constexpr std::size_t kLengthSize = 2;

/// A step of which nothing is left where a file cannot be read or is broken.
template <class Step>
void IfReadable(Step&& step) {
  try {
    step();
  } catch (const platform::UserError&) {
    return;
  } catch (metadata::ExifException) {
    return;
  }
}

/// The JPEG whose EXIF segment belongs to `source`; empty if there is none.
std::string ExifFileOf(const std::string& source) {
  for (const char* extension : {".jpg", ".jpe", ".jpeg"}) {
    if (platform::EndsWithNoCase(source, extension)) return source;
  }
  return platform::FindCompanion(source, ".thm");
}

/// The first EXIF segment and all other APP1 segments; further EXIF segments are dropped.
void ReadApp1(MetadataBlocks& blocks, const std::string& path) {
  const platform::ReadableFile file(path);
  const metadata::FileSource source(file);
  metadata::JpegSegments segments(source);
  while (const auto segment = segments.Next()) {
    const bool isWhole = segment->marker == metadata::jpeg_marker::kApp1 && !segment->cut;
    if (!isWhole || segment->payloadSize <= kShortestSegment) continue;
    if (!segments.PayloadStartsWith(*segment, "Exif")) {
      blocks.furtherApp1.push_back(segments.Payload(*segment));
    } else if (blocks.exif.empty()) {
      blocks.exif = source.Read(segment->payload - kLengthSize, segment->payloadSize + kLengthSize);
    }
  }
}

void BuildExif(MetadataBlocks& blocks, const metadata::ExifData& shooting) {
  const platform::ReadableFile file(shooting.path);
  const metadata::FileSource source(file);
  blocks.exif = metadata::BuildExifBlock(shooting, &source);
}

/// Nothing if the segment holds no note.
void FindNote(MetadataBlocks& blocks) {
  if (blocks.exif.size() <= metadata::kExifSegmentHead) return;
  const metadata::MemorySource tiff(std::span(blocks.exif).subspan(metadata::kExifSegmentHead));
  const auto header = metadata::ReadTiffHeader(tiff, 0);
  if (!header || !header->IsTiff()) return;
  metadata::IfdWalker walker(tiff, header->order, {.followNext = false});
  walker.Walk(header->firstDirectory, [&](const IfdEntry& entry) {
    if (entry.tag != metadata::tiff_tag::kExif) return metadata::Visit::Continue;
    return walker.Walk(entry.value, [&](const IfdEntry& inner) {
      if (inner.tag != metadata::tiff_tag::kMakerNote) return metadata::Visit::Continue;
      blocks.makerNote = {tiff.Read(inner.value, inner.count), inner.value, header->order};
      return metadata::Visit::Stop;
    });
  });
}

/// That of a file built on TIFF, whose header is its first byte.
void ReadFileNote(MetadataBlocks& blocks, const metadata::ExifData& shooting) {
  if (shooting.makerNoteCount == 0 || shooting.makerNoteCount > kLongestNote) return;
  const platform::ReadableFile file(shooting.path);
  const metadata::FileSource source(file);
  const auto header = metadata::ReadTiffHeader(source, 0);
  if (!header || header->firstDirectory == 0) return;
  blocks.makerNote = {source.Read(shooting.makerNoteOffset, shooting.makerNoteCount), shooting.makerNoteOffset,
                      header->order};
}

void ReadSource(MetadataBlocks& blocks, const std::string& source, const ImageFileOptions& options,
                const platform::LocaleText& locale) {
  auto& shooting = blocks.shooting.emplace(source, options.ForExif());
  blocks.iptc = {shooting.iptc, shooting.iptcSurroundings};
  shooting.comment = platform::TrimRight(shooting.comment);  // fields are filled up with blanks
  auto told = shooting;                                      // making the text changes the record
  FillProfileName(told);
  blocks.summary = GetPropertiesText(told, locale);
  const auto exifFile = ExifFileOf(source);
  if (!exifFile.empty()) IfReadable([&] { ReadApp1(blocks, exifFile); });
  if (blocks.exif.empty()) IfReadable([&] { BuildExif(blocks, shooting); });
  IfReadable([&] { FindNote(blocks); });
  if (blocks.makerNote.bytes.empty()) IfReadable([&] { ReadFileNote(blocks, shooting); });
}

/// A profile that cannot be used would make other programs show wrong colours or refuse the file.
void KeepUsable(std::vector<std::byte>& profile) {
  if (!imaging::ColourProfile::FromMemory(profile)) profile.clear();
}

}  // namespace

MetadataBlocks ReadMetadataBlocks(const std::string& source, const std::string& profile,
                                  const ImageFileOptions& options, const platform::LocaleText& locale) {
  MetadataBlocks blocks;
  if (!profile.empty()) IfReadable([&] { blocks.icc = platform::ReadFile(profile, imaging::kMaxColourProfile); });
  KeepUsable(blocks.icc);
  if (source.empty() || !platform::ReadFileStatus(source)) return blocks;
  ReadSource(blocks, source, options, locale);
  if (!blocks.icc.empty()) return blocks;
  blocks.icc = ReadEmbeddedProfile(source).value_or(metadata::IccProfile());
  KeepUsable(blocks.icc);
  return blocks;
}

}  // namespace ml::imagefiles
