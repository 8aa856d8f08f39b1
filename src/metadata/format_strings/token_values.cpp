#include "metadata/format_strings/token_values.h"

#include <string_view>

#include "metadata/exif_comment.h"
#include "metadata/exif_text.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_limits.h"
#include "platform/dates.h"
#include "platform/name_pieces.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata::token_value {
namespace {

constexpr double kSmallestDistance = 0.001;  ///< metres

/// Where the time stands in the date as text.
constexpr std::size_t kTimeFirst = 12, kTimeLast = 19;

std::string_view StemOf(const FormatContext& c) { return platform::SplitPath(c.exif.path).stem; }

/// The characters `first` to `last`, from 1; empty where the last is missing.
std::string_view Part(std::string_view text, std::size_t first, std::size_t last) {
  if (platform::CodePointCount(text) < last) return {};
  text.remove_prefix(platform::FirstCodePoints(text, first - 1).size());
  return platform::FirstCodePoints(text, last - first + 1);
}

bool CanStand(const platform::CodePoint& separator) { return separator.value > ' '; }

std::string WithSeparators(std::string digits, std::string_view separator) {
  constexpr std::size_t kGroup = 3;
  if (separator.empty() || !CanStand(platform::DecodeUtf8(separator, 0))) return digits;
  for (auto at = digits.size(); at > kGroup;) digits.insert(at -= kGroup, separator);
  return digits;
}

template <class Take>
void EachIptcValue(const FormatContext& c, int dataset, Take take) {
  for (const auto& item : c.exif.iptc) {
    if (item.record != kApplicationRecord || item.dataset != dataset) continue;
    const std::string_view value = item.value;
    if (value.size() < kIptcFormatStringLimit) take(value.substr(0, value.find('\0')));
  }
}

}  // namespace

std::string Directory(const FormatContext& c) { return std::string(platform::DirectoryOf(c.exif.path)); }
std::string DirectoryEscaped(const FormatContext& c) {
  return platform::ReplaceAll(platform::DirectoryOf(c.exif.path), "\\", "\\\\");
}
std::string FileName(const FormatContext& c) { return std::string(platform::FileName(c.exif.path)); }
std::string Stem(const FormatContext& c) { return std::string(StemOf(c)); }
std::string FileNameLower(const FormatContext& c) { return platform::nameFold(platform::FileName(c.exif.path)); }
std::string StemLower(const FormatContext& c) { return platform::nameFold(StemOf(c)); }
std::string FirstNumber(const FormatContext& c) { return std::string(platform::FirstDigits(StemOf(c))); }
std::string LastNumber(const FormatContext& c) {
  return std::string(platform::LastDigits(StemOf(c), platform::FirstCharacter::NeverCounts));
}
std::string FileSize(const FormatContext& c) { return FormatFileSize(c.exif.fileSize, c.locale); }
std::string FileSizeInBytes(const FormatContext& c) {
  return WithSeparators(std::to_string(c.exif.fileSize), c.locale.thousandsSeparator);
}

std::string Caption(const FormatContext& c) { return std::string(platform::Trim(GetComment(c.exif, c.options))); }
std::string ExifComments(const FormatContext& c) { return std::string(platform::Trim(GetExifComment(c.exif))); }
std::string Summary(const FormatContext& c) { return GetSummaryText(c.exif, c.locale); }
std::string Properties(const FormatContext& c) { return GetPropertiesText(c.exif, c.locale); }

std::string DatePart(const FormatContext& c, std::size_t first, std::size_t last) {
  return std::string(Part(c.exif.dateTime, first, last));
}
std::string TimePart(const FormatContext& c, std::size_t first, std::size_t last) {
  return std::string(Part(Part(c.exif.dateTime, kTimeFirst, kTimeLast), first, last));
}
std::string LongDate(const FormatContext& c) { return c.locale.LongDate(platform::LocalTime(c.exif.shootingTime)); }

std::string Lens(const FormatContext& c) {
  const auto high = platform::FixedNumber(c.exif.lensMaxFocal, 1);
  return c.exif.lensMinFocal == c.exif.lensMaxFocal ? high
                                                    : platform::FixedNumber(c.exif.lensMinFocal, 1) + " to " + high;
}
std::string SelfTimer(const FormatContext& c) { return platform::ShortNumber(c.exif.selfTimer); }
std::string ImageStabilisation(const FormatContext& c) { return c.exif.imageStabilisation ? "On" : "Off"; }
std::string SubjectDistance(const FormatContext& c) {
  return c.exif.subjectDistance > kSmallestDistance ? platform::FixedNumber(c.exif.subjectDistance, 2) : std::string();
}
std::string SequenceNumber(const FormatContext& c) { return platform::PaddedNumber(c.exif.imageNumber, 7); }

std::string IptcLast(const FormatContext& c, int dataset) {
  std::string last;
  EachIptcValue(c, dataset, [&](std::string_view value) { last = value; });
  return last;
}
std::string IptcAll(const FormatContext& c, int dataset) {
  std::string all;
  EachIptcValue(c, dataset, [&](std::string_view value) { all.append(all.empty() ? "" : ", ").append(value); });
  return all;
}

}  // namespace ml::metadata::token_value
