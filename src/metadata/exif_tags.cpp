#include "metadata/exif_tags.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "metadata/exif_walk.h"
#include "metadata/exif_words.h"
#include "metadata/iptc/iptc_readers.h"
#include "metadata/value_text.h"
#include "metadata/xmp.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::int32_t kSmallPicture = 300;      ///< pixels
constexpr std::uint64_t kLargeFile = 1'048'576;  ///< bytes
constexpr double kNoZoom = 0.01;                 ///< ratios so near to 0 or 1 say that there was none

// Texts. A text that is missing or empty leaves what another tag said.

template <auto Member>
void ReadText(ExifWalk& walk, const IfdEntry& entry) {
  if (auto text = walk.Text(entry); !text.empty()) walk.Data().*Member = std::move(text);
}
template <auto Member>
void ReadTrimmed(ExifWalk& walk, const IfdEntry& entry) {
  if (const auto text = walk.Text(entry); !text.empty()) walk.Data().*Member = platform::TrimRight(text);
}
void ReadOwnerIfNone(ExifWalk& walk, const IfdEntry& entry) {
  if (walk.Data().owner.empty()) ReadTrimmed<&ExifData::owner>(walk, entry);
}
void ReadDescription(ExifWalk& walk, const IfdEntry& entry) {
  ReadTrimmed<&ExifData::imageDescription>(walk, entry);
  walk.KeepDescriptionPlace(entry);
}
void ReadComment(ExifWalk& walk, const IfdEntry& entry) {
  if (!walk.IsFirst(entry)) return;
  if (auto text = walk.Comment(entry); !text.empty()) walk.Data().comment = std::move(text);
  walk.KeepCommentPlace(entry);
}
void ReadDate(ExifWalk& walk, const IfdEntry& entry) {
  ReadText<&ExifData::dateTimeOriginal>(walk, entry);
  ReadText<&ExifData::dateTime>(walk, entry);
}
void ReadDateDigitized(ExifWalk& walk, const IfdEntry& entry) {
  ReadText<&ExifData::dateTimeDigitized>(walk, entry);
  if (walk.Data().dateTime.empty()) ReadText<&ExifData::dateTime>(walk, entry);
}

// Numbers

template <auto Member>
void ReadNumber(ExifWalk& walk, const IfdEntry& entry) {
  walk.Data().*Member = static_cast<std::int32_t>(entry.value);
}
template <auto Member>
void ReadSide(ExifWalk& walk, const IfdEntry& entry) {
  ReadNumber<Member>(walk, entry);
  auto& data = walk.Data();
  if (data.*Member < kSmallPicture && data.fileSize > kLargeFile) data.tiffThumbnailOnly = true;
}
template <auto Member>
void ReadRationalTo(ExifWalk& walk, const IfdEntry& entry) {
  if (const auto value = walk.Rational(entry)) walk.Data().*Member = *value;
}
void ReadExposureCompensation(ExifWalk& walk, const IfdEntry& entry) {
  const auto value = walk.Rational(entry);
  if (!value) return;
  auto& data = walk.Data();
  data.exposureCompensation = data.totalExposureCompensation = *value;
  data.hasTotalExposureCompensation = true;
}
void ReadMaxAperture(ExifWalk& walk, const IfdEntry& entry) {
  if (const auto apex = walk.Rational(entry)) walk.Data().maxAperture = std::exp2(*apex / 2);
}

// Numbers kept as text

void ReadShutter(ExifWalk& walk, const IfdEntry& entry) {
  if (const auto seconds = walk.Rational(entry)) walk.Data().shutterSpeed = ShutterText(*seconds);
}
void ReadAperture(ExifWalk& walk, const IfdEntry& entry) {
  if (const auto fNumber = walk.Rational(entry)) walk.Data().aperture = ApertureText(*fNumber);
}
void ReadApexShutter(ExifWalk& walk, const IfdEntry& entry) {
  const auto apex = walk.Rational(entry);
  if (apex && walk.Data().shutterSpeed.empty()) walk.Data().shutterSpeed = ShutterText(std::exp2(-*apex));
}
void ReadApexAperture(ExifWalk& walk, const IfdEntry& entry) {
  const auto apex = walk.Rational(entry);
  if (apex && walk.Data().aperture.empty()) walk.Data().aperture = ApertureText(std::exp2(*apex / 2));
}
void ReadIso(ExifWalk& walk, const IfdEntry& entry) {
  walk.Data().iso = std::to_string(static_cast<std::int32_t>(entry.value));
}
void ReadIsoNumber(ExifWalk& walk, const IfdEntry& entry) {
  ReadIso(walk, entry);
  walk.Data().isoShort = static_cast<std::uint16_t>(entry.value);
}
void ReadDigitalZoom(ExifWalk& walk, const IfdEntry& entry) {
  const auto ratio = walk.Rational(entry);
  if (!ratio || !walk.Data().digitalZoom.empty()) return;
  if (*ratio > kNoZoom && std::fabs(*ratio - 1) > kNoZoom) {
    walk.Data().digitalZoom = platform::FixedNumber(*ratio, 1) + "x";
  }
}

// Words

template <auto Member, auto Word>
void ReadWord(ExifWalk& walk, const IfdEntry& entry) {
  if (const auto word = Word(entry.value); !word.empty()) walk.Data().*Member = word;
}
template <auto Member>
void ReadLevelIfNone(ExifWalk& walk, const IfdEntry& entry) {
  if ((walk.Data().*Member).empty()) ReadWord<Member, LevelWord>(walk, entry);
}

// Structure and blocks

void ReadExifDirectory(ExifWalk& walk, const IfdEntry& entry) { walk.EnterExif(entry); }
void ReadSubIfd(ExifWalk& walk, const IfdEntry& entry) { walk.EnterSubIfd(entry); }
void ReadMakerNoteTag(ExifWalk& walk, const IfdEntry& entry) { walk.ReadMakerNote(entry); }
void ReadIccMark(ExifWalk& walk, const IfdEntry&) { walk.Data().hasIccProfile = true; }
void ReadPhotoshop(ExifWalk& walk, const IfdEntry& entry) { walk.Data().photoshopData = walk.Bytes(entry); }

/// Programs give these blocks one of three types.
template <void (*Read)(ExifData& data, ByteView bytes)>
void ReadForeign(ExifWalk& walk, const IfdEntry& entry) {
  if (!entry.Is(IfdType::Byte) && !entry.Is(IfdType::Long) && !entry.Is(IfdType::Undefined)) return;
  const auto bytes = walk.Bytes(entry);
  Read(walk.Data(), ByteView(bytes, ByteOrder::Big));
}

struct TagRow {
  std::uint16_t tag;
  unsigned places;
  TagReader read;
};

using namespace tag_place;
using D = ExifData;
constexpr unsigned kIfd0 = kBlockIfd0 | kFileIfd0, kExif = kBlockExif | kFileExif, kFile = kFileIfd0 | kFileExif;
/// Tags of the EXIF directory that some TIFF files hold in the first one.
constexpr unsigned kExifOrFile = kExif | kFileIfd0;

constexpr TagRow kTags[] = {
    {256, kFileIfd0, ReadSide<&D::imageWidth>},
    {257, kFileIfd0, ReadSide<&D::imageHeight>},
    {270, kIfd0, ReadDescription},
    {271, kIfd0, ReadTrimmed<&D::make>},
    {272, kIfd0, ReadTrimmed<&D::model>},
    {274, kIfd0, ReadNumber<&D::orientation>},
    {277, kFileIfd0, ReadNumber<&D::samplesPerPixel>},
    {305, kIfd0, ReadText<&D::software>},
    {306, kIfd0, ReadDate},
    {315, kBlockIfd0, ReadOwnerIfNone},
    {315, kFileIfd0, ReadTrimmed<&D::owner>},
    {330, kFileIfd0, ReadSubIfd},
    {700, kFileIfd0, ReadForeign<ReadXmp>},
    {33432, kIfd0, ReadTrimmed<&D::copyright>},
    {33434, kExifOrFile, ReadShutter},
    {33437, kExifOrFile, ReadAperture},
    {33723, kFileIfd0, ReadForeign<ReadBareIptc>},
    {34377, kFileIfd0, ReadPhotoshop},
    {34665, kIfd0, ReadExifDirectory},
    {34675, kFileIfd0, ReadIccMark},
    {34850, kExifOrFile, ReadWord<&D::exposureMode, ExposureModeWord>},
    {34855, kBlockExif, ReadIsoNumber},
    {34855, kFile, ReadIso},
    {36867, kExif, ReadDate},
    {36868, kExif, ReadDateDigitized},
    {37377, kBlockExif, ReadApexShutter},
    {37378, kBlockExif, ReadApexAperture},
    {37380, kBlockExif, ReadExposureCompensation},
    {37380, kFile, ReadRationalTo<&D::exposureCompensation>},
    {37381, kBlockExif, ReadMaxAperture},
    {37382, kExifOrFile, ReadRationalTo<&D::subjectDistance>},
    {37383, kExifOrFile, ReadWord<&D::meteringMode, MeteringModeWord>},
    {37384, kExifOrFile, ReadWord<&D::whiteBalance, WhiteBalanceWord>},
    {37385, kExifOrFile, ReadWord<&D::flash, FlashWord>},
    {37386, kExifOrFile, ReadRationalTo<&D::focalLength>},
    {37500, kExifOrFile, ReadMakerNoteTag},
    {37510, kExifOrFile, ReadComment},
    {40962, kBlockExif, ReadNumber<&D::imageWidth>},
    {40963, kBlockExif, ReadNumber<&D::imageHeight>},
    {41988, kFileExif, ReadDigitalZoom},
    {41989, kExif, ReadNumber<&D::focalLength35>},
    {41992, kExif, ReadLevelIfNone<&D::contrast>},
    {41993, kExif, ReadLevelIfNone<&D::saturation>},
    {41994, kExif, ReadLevelIfNone<&D::sharpness>},
};

}  // namespace

TagReader FindTagReader(std::uint16_t tag, unsigned place) {
  const auto* row = std::ranges::find_if(kTags, [&](const auto& r) { return r.tag == tag && (r.places & place) != 0; });
  return row == std::end(kTags) ? nullptr : row->read;
}

}  // namespace ml::metadata
