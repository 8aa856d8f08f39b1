#include "metadata/exif_finish.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "metadata/canon/white_balance.h"
#include "metadata/crw_file.h"
#include "metadata/jpeg_size.h"
#include "platform/dates.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kCanon = "Canon";

constexpr std::size_t kFirmwareTail = 10'240;  ///< bytes at the end of a file in which its firmware may be named
constexpr std::size_t kMaxFirmware = 24;

constexpr std::string_view kHeapSettingModels[] = {"eos 10d", "eos 300d", "eos kiss digital", "eos digital rebel"};
constexpr std::string_view kToneModels[] = {"eos d60", "eos 10d", "eos 300d", "eos digital rebel", "eos kiss digital"};
constexpr std::string_view kLevelModels[] = {
    "eos d30",       "eos d60",       "eos 10d",       "eos 300d",     "eos digital rebel", "eos kiss digital",
    "powershot g1",  "powershot g2",  "powershot g3",  "powershot g5", "powershot pro90",   "powershot s30",
    "powershot s35", "powershot s40", "powershot s45", "powershot s50"};

bool HoldsAny(const std::string& text, std::span<const std::string_view> words) {
  return std::ranges::any_of(words, [&](auto word) { return text.find(word) != std::string::npos; });
}

void TakeHeapSettings(ExifData& data, const ByteSource& file) {
  const auto settings = ReadCrwSettings(file);
  if (settings.stitchShot) data.stitchShot = *settings.stitchShot;
  if (settings.colorSpace == 1) data.colorSpace = "sRGB";
  if (settings.colorSpace == 2) data.colorSpace = "AdobeRGB";
  if (settings.whiteBalance) data.whiteBalance = CanonWhiteBalanceWord(*settings.whiteBalance);
}

std::string FindFirmware(const ByteSource& file) {
  const auto start = file.Size() - std::min<std::uint64_t>(file.Size(), kFirmwareTail);
  const auto tail = file.ReadUpTo(start, kFirmwareTail);
  const auto text = ByteView(tail, ByteOrder::Little).Text();
  const auto found = text.find("Firmware");
  if (found == std::string_view::npos) return {};
  const auto rest = text.substr(found, kMaxFirmware);
  return std::string(rest.substr(0, rest.find('\0')));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

void CompleteCanon(ExifData& data, const ByteSource& file) {
  const bool isCrw = platform::EndsWithNoCase(data.path, ".crw");
  if (!isCrw && data.make != kCanon) return;
  data.make = kCanon;
  if (!data.firmware.empty()) return;
  data.firmware = FindFirmware(file);
  if (isCrw && HoldsAny(platform::AsciiLower(data.model), kHeapSettingModels)) TakeHeapSettings(data, file);
}

void CompleteJpegSize(ExifData& data, const ByteSource& file, const ExifOptions& options) {
  if (data.imageWidth == 0) {
    if (const auto size = ReadJpegSize(file)) {
      data.imageWidth = size->width;
      data.imageHeight = size->height;
    }
  }
  const bool onItsSide = data.orientation == 6 || data.orientation == 8;
  if (options.useJpegExifOrientation && onItsSide) std::swap(data.imageWidth, data.imageHeight);
}

void ClearFieldsOfOtherModels(ExifData& data) {
  if (data.make != kCanon) return;
  const auto model = platform::AsciiLower(data.model);
  if (!HoldsAny(model, kToneModels)) data.tone.clear();
  if (HoldsAny(model, kLevelModels)) return;
  data.contrast.clear();
  data.saturation.clear();
  data.sharpness.clear();
}

void CompleteImageNumber(ExifData& data) {
  if (data.imageNumber != 0 || data.model.find("Canon EOS-1D") == std::string::npos) return;
  const auto stem = platform::SplitPath(data.path).stem;
  if (stem.size() < 4) return;
  const auto digits = stem.substr(stem.size() - 4);
  if (std::ranges::all_of(digits, IsDigit)) data.imageNumber = std::stoi(std::string(digits));
}

void CompleteDate(ExifData& data) {
  if (data.dateTime.empty()) {
    data.dateTime = platform::ExifDateText(static_cast<std::time_t>(data.shootingTime));
    return;
  }
  const auto fields = platform::ParseDateTime(data.dateTime, platform::DateForm::DotsAllowed);
  const auto time = fields ? platform::ToTime(*fields) : std::nullopt;
  if (!time) return;
  data.shootingTime = *time;
  data.dateRecorded = true;
}

void CompleteSize(ExifData& data) {
  const bool isNef = platform::EndsWithNoCase(data.path, ".nef");
  if (isNef && data.model == "NIKON D1X") {
    data.imageWidth = 3008;  // its sensor's cells are half as high as wide: the file tells their number
    data.imageHeight = 1960;
  }
  // Of other files, which took the note along from a raw one, the pixels themselves were turned.
  const bool isRaw = isNef || platform::EndsWithNoCase(data.path, ".crw");
  const bool onItsSide = data.userRotation == 90 || data.userRotation == 270;
  if (isRaw && onItsSide) std::swap(data.imageWidth, data.imageHeight);
}

}  // namespace ml::metadata
