#include "metadata/exif_formats.h"

#include <algorithm>
#include <string>

#include "metadata/bmp_size.h"
#include "metadata/companion_exif.h"
#include "metadata/exif_reader.h"
#include "metadata/gif_size.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/iptc/iptc_readers.h"
#include "metadata/jp2_boxes.h"
#include "metadata/png_chunks.h"
#include "metadata/psd_resources.h"
#include "metadata/xmp.h"
#include "metadata/xmp_scan.h"
#include "platform/dates.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::uint64_t kSmallestEos1DRaw = 1'638'401;  ///< bytes
constexpr std::uint64_t kMostExif = 1ULL << 20;         ///< bytes; in a JPEG there is room for 64 KiB
constexpr std::int32_t kLargestEos1DThumbnail = 289;    ///< pixels

template <class Size>
void TakeSize(ExifData& data, const Size& size) {
  data.imageWidth = size.width;
  data.imageHeight = size.height;
}

template <std::uint64_t Base, TiffMagic Magic = TiffMagic::Required>
void ReadRaw(ExifData& data, const ByteSource& file) {
  ReadTiffFile(data, file, Base, Magic);
}

void ReadRaf(ExifData& data, const ByteSource& file) {
  ReadTiffFile(data, file, FindRafTiffBase(file), TiffMagic::Required);
}

void ReadTiff(ExifData& data, const ByteSource& file) {
  ReadTiffFile(data, file, 0, TiffMagic::Required);
  const auto model = platform::AsciiLower(data.model);
  const auto holds = [&](std::string_view word) { return model.find(word) != std::string::npos; };
  data.isEos1DRaw = holds("canon") && holds("eos") && holds("1d") && data.fileSize >= kSmallestEos1DRaw &&
                    data.imageWidth <= kLargestEos1DThumbnail && data.imageHeight <= kLargestEos1DThumbnail;
}

/// EXIF data beside a picture that has its size in its own header and is shown as it lies. Damage in them costs nothing
/// else, and nobody writes into them, so there are no places to remember.
void TakeExif(ExifData& data, const ByteSource& file, const FileRange& range) {
  const auto bytes = file.ReadUpTo(range.position, static_cast<std::size_t>(std::min(range.size, kMostExif)));
  try {
    ReadExifTiff(data, bytes);
  } catch (ExifException) {
    data.exifInvalid = true;
  }
  data.orientation = data.userRotation = 0;
  data.userCommentPtr = data.userCommentSize = data.imageDescriptionPtr = data.imageDescriptionCount = 0;
}

/// The texts that our own writer of PNG files puts in.
void TakePngTexts(ExifData& data, const PngInfo& png) {
  const auto take = [&](std::string_view key, std::string& field) {
    const auto* text = field.empty() ? png.FindText(key) : nullptr;
    if (text != nullptr) field = platform::TrimRight(*text);
  };
  take("Description", data.comment);
  take("Software", data.firmware);
  take("Source", data.model);
  std::string date;
  take("Creation Time", date);
  date = platform::ReplaceAll(date, "-", ":");
  // Other programs write the date in words, which nobody who reads the field would understand.
  if (platform::ParseDateTime(date, platform::DateForm::DotsAllowed)) data.dateTime = date;
}

void ReadPng(ExifData& data, const ByteSource& file) {
  const auto png = ReadPngInfo(file);
  if (!png) return;
  TakeExif(data, file, png->exif);
  data.comment.clear();  // stands in a text of its own, which alone is edited
  TakeSize(data, *png);
  data.hasIccProfile = png->hasIccProfile;
  TakePngTexts(data, *png);
  if (const auto* iptc = png->FindText("IPTC")) ReadPngIptc(data, *iptc);
}

void ReadPsd(ExifData& data, const ByteSource& file) {
  const auto psd = ReadPsdFile(file);
  if (!psd) throw ExifException::BadHeader;
  TakeSize(data, *psd);
  data.hasIccProfile = FindPsdResource(psd->resources, psd_resource::kIccProfile) != nullptr;
  const auto* iptc = FindPsdResource(psd->resources, psd_resource::kIptc);
  if (iptc == nullptr) return;
  const auto bytes = file.ReadUpTo(iptc->data.position, std::min<std::uint64_t>(iptc->data.size, kMostIptcBytes));
  ReadIptcResource(data, ByteView(bytes, ByteOrder::Big));
}

void ReadJp2(ExifData& data, const ByteSource& file) {
  if (const auto jp2 = ReadJp2File(file)) {
    if (const auto exif = jp2->FindUuid(file, kExifUuid)) TakeExif(data, file, *exif);
    TakeSize(data, *jp2);
    data.hasIccProfile = jp2->iccProfile.size > 0;
    if (const auto iptc = jp2->FindUuid(file, kIptcUuid)) {
      const auto bytes = file.ReadUpTo(iptc->position, std::min<std::uint64_t>(iptc->size, kMostIptcBytes));
      ReadBareIptc(data, ByteView(bytes, ByteOrder::Big));
    }
  }
  const auto packet = FindXmpPacket(file);
  ReadXmp(data, ByteView(packet, ByteOrder::Big));
}

void ReadGif(ExifData& data, const ByteSource& file) {
  if (const auto size = ReadGifSize(file)) TakeSize(data, *size);
}
void ReadBmp(ExifData& data, const ByteSource& file) {
  if (const auto size = ReadBmpSize(file)) TakeSize(data, *size);
}

constexpr ExifFormat kFormats[] = {
    {.extension = ".jpg", .read = ReadJpegWithIptc, .isJpeg = true, .mayBeCanon = true},
    {.extension = ".jpe", .read = ReadJpegWithIptc, .isJpeg = true, .mayBeCanon = true},
    {.extension = ".jpeg", .read = ReadJpegWithIptc, .isJpeg = true, .mayBeCanon = true},
    {.extension = ".thm", .read = ReadJpegWithIptc, .isJpeg = true},
    {.extension = ".mrw", .read = ReadRaw<kMrwTiffBase>},
    {.extension = ".orf", .read = ReadRaw<0, TiffMagic::Any>},
    {.extension = ".raf", .read = ReadRaf},
    {.extension = ".pef", .read = ReadRaw<0>},
    {.extension = ".tif", .read = ReadTiff},
    {.extension = ".tiff", .read = ReadTiff},
    {.extension = ".nef", .read = ReadRaw<0>},
    {.extension = ".png", .read = ReadPng},
    {.extension = ".psd", .read = ReadPsd},
    {.extension = ".jp2", .read = ReadJp2},
    {.extension = ".jpf", .read = ReadJp2},
    {.extension = ".gif", .read = ReadGif},
    {.extension = ".bmp", .read = ReadBmp},
    {.extension = ".crw", .read = ReadCrwWithCompanion, .mayBeCanon = true},
    {.extension = ".avi", .read = ReadAviCompanion},
};

}  // namespace

const ExifFormat* FindExifFormat(std::string_view path) {
  const auto extension = platform::AsciiLower(platform::SplitPath(path).extension);
  const auto* format = std::ranges::find(kFormats, extension, &ExifFormat::extension);
  return format == std::end(kFormats) ? nullptr : format;
}

}  // namespace ml::metadata
