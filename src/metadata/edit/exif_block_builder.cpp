#include "metadata/edit/exif_block_builder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "metadata/byte_writer.h"
#include "metadata/edit/canon_note_builder.h"
#include "metadata/edit/canon_note_copy.h"
#include "metadata/edit/ifd_builder.h"
#include "metadata/exif_words.h"
#include "metadata/value_text.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::size_t kDateLength = 19, kMakeField = 6, kModelField = 32, kDescriptionField = 32;
constexpr std::size_t kCommentField = 264, kCommentCode = 8;
constexpr std::size_t kLongestText = 16'000;  ///< of each; three of them and the rest fit into a segment
constexpr std::uint32_t kResolution = 180, kInches = 2;
constexpr std::int32_t kBiasDenominator = 3000;
constexpr std::uint32_t kApexDenominator = 65'536;  ///< as the cameras write it
constexpr std::uint32_t kInfinite = 0xffffffff;

std::string_view Cut(const std::string& text) { return std::string_view(text).substr(0, kLongestText); }

void AddDate(IfdBuilder& directory, std::uint16_t tag, const ExifData& data, const std::string& first,
             const std::string& otherwise) {
  const auto& text = first.size() == kDateLength ? first : otherwise;
  if (data.dateRecorded && text.size() == kDateLength) directory.Ascii(tag, text);
}

/// With the smallest power of ten that tells the number exactly, or as many places as there is room for.
void AddRatio(IfdBuilder& directory, std::uint16_t tag, double value) {
  constexpr double kMax = std::numeric_limits<std::int32_t>::max();
  constexpr std::uint32_t kMostPlaces = 100'000;
  if (!(value > 0) || value > kMax) return;
  std::uint32_t denominator = 1;
  while (denominator < kMostPlaces && std::fabs(value * denominator - std::round(value * denominator)) > 1e-7 &&
         value * denominator * 10 <= kMax) {
    denominator *= 10;
  }
  directory.Rational(tag, static_cast<std::uint32_t>(std::llround(value * denominator)), denominator);
}

void AddExposureTime(IfdBuilder& directory, const std::string& text) {
  const auto time = ReadShutterText(text);
  if (time.fraction > 0) {
    directory.Rational(33434, 1, static_cast<std::uint32_t>(time.fraction));
  } else {
    AddRatio(directory, 33434, time.seconds);
  }
}

/// The code that is shown as this text, if there is one.
template <class WordOfCode>
void AddCode(IfdBuilder& directory, std::uint16_t tag, const std::string& text, std::uint16_t last,
             WordOfCode&& wordOf) {
  for (std::uint16_t code = 0; code <= last && !text.empty(); ++code) {
    if (wordOf(code) == text) return directory.Short(tag, code);
  }
}

void AddFlash(IfdBuilder& directory, const std::string& text) {
  constexpr std::uint16_t kFired = 1, kNotFired = 0, kLast = 0x7f;
  if (text.empty() || text.starts_with("Off + 2nd")) return;
  if (text.starts_with("Built-in") || text.starts_with("External")) {
    directory.Short(37385, kFired);  // the maker's note says which one
  } else if (platform::EqualsAsciiFolded(text, "Off")) {
    directory.Short(37385, kNotFired);
  } else {
    AddCode(directory, 37385, text, kLast, FlashWord);
  }
}

void AddDistance(IfdBuilder& directory, double metres) {
  if (metres < 0) {
    directory.Rational(37382, kInfinite, 1);
  } else {
    AddRatio(directory, 37382, metres);
  }
}

void AddComment(IfdBuilder& directory, const std::string& comment) {
  ByteWriter field(ByteOrder::Little);
  field.Text("ASCII");
  field.Zeros(kCommentCode - field.Size());
  field.Text(Cut(comment));
  if (field.Size() < kCommentField) field.Zeros(kCommentField - field.Size());
  directory.Undefined(37510, field.View());
}

void AddExposure(IfdBuilder& exif, const ExifData& data) {
  AddExposureTime(exif, data.shutterSpeed);
  AddRatio(exif, 33437, platform::LeadingNumber(data.aperture));
  AddCode(exif, 34850, data.exposureMode, 8, ExposureModeWord);
  const auto iso = data.isoShort != 0 ? std::int32_t{data.isoShort} : platform::LeadingInteger(data.iso);
  if (iso > 0 && iso <= std::numeric_limits<std::uint16_t>::max()) exif.Short(34855, static_cast<std::uint16_t>(iso));
  const double stops = data.hasTotalExposureCompensation ? data.totalExposureCompensation : data.exposureCompensation;
  if (std::fabs(stops) < 100) {
    exif.SignedRational(37380, static_cast<std::int32_t>(std::lround(stops * kBiasDenominator)), kBiasDenominator);
  }
  if (data.maxAperture >= 1 && data.maxAperture < 1000) {
    const auto apex = std::llround(2 * std::log2(data.maxAperture) * kApexDenominator);
    exif.Rational(37381, static_cast<std::uint32_t>(apex), kApexDenominator);
  }
}

std::uint16_t ColorSpace(const std::string& word) { return word == "AdobeRGB" ? 0xffff : 1; }

IfdBuilder ExifDirectory(const ExifData& data, std::optional<IfdBuilder> note) {
  IfdBuilder exif(ByteOrder::Little);
  const auto undefined = [&](std::uint16_t tag, std::string_view bytes) {
    exif.Undefined(tag, platform::AsBytes(bytes));
  };
  AddExposure(exif, data);
  undefined(36864, "0220");
  AddDate(exif, 36867, data, data.dateTimeOriginal, data.dateTime);
  AddDate(exif, 36868, data, data.dateTimeDigitized, data.dateTime);
  undefined(37121, std::string_view("\1\2\3\0", 4));  // brightness and the two colour differences
  AddDistance(exif, data.subjectDistance);
  AddCode(exif, 37383, data.meteringMode, 6, MeteringModeWord);
  AddCode(exif, 37384, data.whiteBalance, 24, WhiteBalanceWord);
  AddFlash(exif, data.flash);
  AddRatio(exif, 37386, data.focalLength);
  if (note) exif.Note(37500, std::move(*note));
  AddComment(exif, data.comment);
  undefined(40960, "0100");
  exif.Short(40961, ColorSpace(data.colorSpace));
  exif.Long(40962, static_cast<std::uint32_t>(std::max(data.imageWidth, 0)));
  exif.Long(40963, static_cast<std::uint32_t>(std::max(data.imageHeight, 0)));
  if (data.focalLength35 > 0) exif.Short(41989, static_cast<std::uint16_t>(std::min(data.focalLength35, 0xffff)));
  return exif;
}

}  // namespace

std::vector<std::byte> BuildExifBlock(const ExifData& data, const ByteSource* source) {
  const bool canon = platform::AsciiLower(data.make).starts_with("canon");
  IfdBuilder ifd0(ByteOrder::Little);
  ifd0.Ascii(270, Cut(data.imageDescription), kDescriptionField);
  ifd0.Ascii(271, Cut(data.make), kMakeField);
  ifd0.Ascii(272, Cut(data.model).substr(0, kModelField - 1), kModelField);
  ifd0.Short(274, 1);
  ifd0.Rational(282, kResolution, 1);
  ifd0.Rational(283, kResolution, 1);
  ifd0.Short(296, kInches);
  if (!data.software.empty()) ifd0.Ascii(305, Cut(data.software).substr(0, 255));
  AddDate(ifd0, 306, data, data.dateTime, data.dateTimeOriginal);
  if (!canon && !data.owner.empty()) ifd0.Ascii(315, Cut(data.owner).substr(0, 255));
  ifd0.Short(531, 1);
  if (!data.copyright.empty()) ifd0.Ascii(33432, Cut(data.copyright).substr(0, 4095));
  std::optional<IfdBuilder> note;
  if (canon && source != nullptr) note = CopyCanonNote(data, *source, ByteOrder::Little);
  if (canon && !note) note = BuildCanonMakerNote(data, ByteOrder::Little);
  ifd0.Directory(34665, ExifDirectory(data, std::move(note)));

  ByteWriter tiff(ByteOrder::Little);
  tiff.Text("II");
  tiff.Short(42);
  tiff.Long(8);
  ifd0.Write(tiff);

  ByteWriter segment(ByteOrder::Big);
  segment.Short(static_cast<std::uint16_t>(2 + 6 + tiff.Size()));
  segment.Text("Exif");
  segment.Short(0);
  segment.Bytes(tiff.View());
  return segment.Take();
}

}  // namespace ml::metadata
