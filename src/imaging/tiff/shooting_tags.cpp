#include "imaging/tiff/shooting_tags.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>

#include "metadata/edit/relocated_note.h"
#include "metadata/value_text.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::imaging {
namespace {

using metadata::ExifData;
using metadata::IfdType;
using platform::LeadingNumber;

constexpr double kSmallest = 0.0001, kNearest = 0.01, kLongExposure = 10;
constexpr std::int32_t kBiasDenominator = 3000;
constexpr std::size_t kCommentField = 256;

struct WordRow {
  std::string_view word;
  int code = 0;
};
constexpr WordRow kPrograms[] = {{"manual", 1}, {"tv", 3}, {"av", 4}, {"sport", 6}, {"portrait", 7}, {"landscape", 8}};
constexpr WordRow kMeterings[] = {{"average", 1},       {"spot", 3},       {"multi-spot", 4},
                                  {"multi-segment", 5}, {"evaluative", 5}, {"partial", 6}};
/// Kept: "flourescent" is what other readers of these files know.
constexpr WordRow kLights[] = {{"auto", 0},  {"daylight", 1}, {"flourescent", 2}, {"tungsten", 3},
                               {"flash", 4}, {"fine", 9},     {"cloudy", 10},     {"shade", 11}};
constexpr WordRow kScenes[] = {{"landscape", 1}, {"portrait", 2}, {"night", 3}};
constexpr WordRow kAmounts[] = {{"low", 1}, {"high", 2}};

template <class Rows>
int CodeOf(const Rows& rows, const std::string& text, int otherwise) {
  const auto lowered = platform::AsciiLower(text);
  const auto found = std::ranges::find(rows, lowered, &WordRow::word);
  return found == std::end(rows) ? otherwise : found->code;
}

bool Holds(const std::string& text, std::string_view word) {
  return platform::AsciiLower(text).find(word) != std::string::npos;
}

int SceneOf(const std::string& mode) {
  const auto found = std::ranges::find_if(kScenes, [&](const auto& row) { return Holds(mode, row.word); });
  return found == std::end(kScenes) ? 0 : found->code;
}

/// `value` with the denominator, where it fits.
void Ratio(TiffTags& tags, std::uint16_t tag, double value, std::uint32_t denominator) {
  const double numerator = value * denominator;
  if (!(numerator <= std::numeric_limits<std::uint32_t>::max())) return;
  tags.Rational(tag, static_cast<std::uint32_t>(std::llround(numerator)), denominator);
}

void ExposureTime(TiffTags& tags, const std::string& text) {
  constexpr std::uint16_t kTag = 0x829a;
  const auto [fraction, seconds] = metadata::ReadShutterText(text);
  if (fraction > 0) return tags.Rational(kTag, 1, static_cast<std::uint32_t>(fraction));
  if (seconds > kSmallest) Ratio(tags, kTag, seconds, seconds >= kLongExposure ? 10 : 1000);
}

void Exposure(TiffTags& tags, const ExifData& data) {
  ExposureTime(tags, data.shutterSpeed);
  const double aperture = LeadingNumber(data.aperture);
  if (aperture > kSmallest) Ratio(tags, 0x829d, aperture, 100);
  tags.Short(0x8822, CodeOf(kPrograms, data.exposureMode, 2));
  const auto iso = platform::LeadingInteger(data.iso);
  if (iso > 0 && iso <= std::numeric_limits<std::uint16_t>::max()) tags.Short(0x8827, iso);
}

void Bias(TiffTags& tags, const ExifData& data) {
  const double stops = data.hasTotalExposureCompensation ? data.totalExposureCompensation : data.exposureCompensation;
  if (!(std::fabs(stops) < 100)) return;
  tags.SignedRational(0x9204, static_cast<std::int32_t>(std::lround(stops * kBiasDenominator)), kBiasDenominator);
}

/// Kept: of type text, with the code of its characters in front as in a field that is none. The blanks are room for an
/// edit in place.
void Comment(TiffTags& tags, const std::string& comment) {
  metadata::ByteWriter value(metadata::ByteOrder::Little);
  value.Text("ASCII");
  value.Zeros(3);
  value.Text(comment);
  if (comment.size() < kCommentField) value.Text(std::string(kCommentField - comment.size(), ' '));
  tags.Raw(0x9286, IfdType::Ascii, value.Take());
}

void Light(TiffTags& tags, const ExifData& data) {
  if (!data.whiteBalance.empty()) tags.Short(0x9208, CodeOf(kLights, data.whiteBalance, 0));
  tags.Short(0x9209, data.flash.empty() || data.flash.starts_with("Off") ? 0 : 1);
  if (data.focalLength > kSmallest) Ratio(tags, 0x920a, data.focalLength, 10);
}

void Note(TiffTags& tags, const MakerNote& note) {
  const auto relocated = [&note](std::uint32_t position) {
    return metadata::RelocatedNote(note.bytes, note.order, note.offset, metadata::ByteOrder::Little, position);
  };
  if (!note.bytes.empty()) tags.Placed(0x927c, relocated);
}

void Settings(TiffTags& tags, const ExifData& data) {
  constexpr int kUncalibrated = 0xffff;
  tags.Short(0xa001, kUncalibrated);
  tags.Short(0xa401, 0);
  if (data.focalLength35 > 0) tags.Short(0xa405, std::min(data.focalLength35, 0xffff));
  const bool bracketed = data.aebCompensation != 0;
  tags.Short(0xa402, bracketed ? 2 : Holds(data.exposureMode, "manual") ? 1 : 0);
  tags.Short(0xa403, data.whiteBalance.empty() || Holds(data.whiteBalance, "auto") ? 0 : 1);
  tags.Short(0xa406, SceneOf(data.exposureMode));
  if (!data.contrast.empty()) tags.Short(0xa408, CodeOf(kAmounts, data.contrast, 0));
  if (!data.saturation.empty()) tags.Short(0xa409, CodeOf(kAmounts, data.saturation, 0));
  if (!data.sharpness.empty()) tags.Short(0xa40a, CodeOf(kAmounts, data.sharpness, 0));
}

}  // namespace

std::string TagDate(const ExifData& shooting) {
  return shooting.dateRecorded ? platform::ReplaceAll(shooting.dateTime, ".", ":") : std::string();
}

TiffTags ShootingTags(const ExifData& shooting, const MakerNote& note) {
  TiffTags tags;
  Exposure(tags, shooting);
  constexpr std::byte version[] = {std::byte{'0'}, std::byte{'2'}, std::byte{'1'}, std::byte{'0'}};
  tags.Raw(0x9000, IfdType::Undefined, {std::begin(version), std::end(version)});
  Bias(tags, shooting);
  if (shooting.subjectDistance > kNearest) Ratio(tags, 0x9206, shooting.subjectDistance, 1000);
  tags.Short(0x9207, CodeOf(kMeterings, shooting.meteringMode, 2));
  Light(tags, shooting);
  Note(tags, note);
  Comment(tags, shooting.comment);
  const auto date = TagDate(shooting);
  constexpr std::uint16_t kDates[] = {0x9003, 0x9004};
  for (const auto tag : kDates) {
    if (!date.empty()) tags.Ascii(tag, date);
  }
  Settings(tags, shooting);
  return tags;
}

}  // namespace ml::imaging
