#include "metadata/canon/crw_properties.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "metadata/canon/canon_model.h"
#include "metadata/canon/canon_values.h"
#include "metadata/canon/known_fields.h"
#include "metadata/ciff.h"
#include "metadata/value_text.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

// Records of the format and the tags of a note that hold the same; as published in the tables of CIFF readers.
constexpr std::uint16_t kComment = 0x0805, kMakeAndModel = 0x080a, kSerial = 0x180b, kPictureInfo = 0x1810,
                        kShotInformation = 0x102a;
struct Twin {
  std::uint16_t record = 0, tag = 0;
};
/// The shot information goes by the settings, the colour temperature by the white balance.
constexpr Twin kArrays[] = {{0x102d, canon_tag::kCameraSettings},
                            {0x1029, canon_tag::kFocalLength},
                            {kShotInformation, canon_tag::kShotInformation},
                            {0x1033, canon_tag::kCustomFunctions},
                            {0x1038, canon_tag::kAfInformation},
                            {0x1090, canon_tag::kEos1DCustomFunctions}};
constexpr Twin kShorts[] = {{0x10ae, canon_tag::kColorTemperature}, {0x10b4, canon_tag::kColorSpace}};
constexpr Twin kTexts[] = {{0x080b, canon_tag::kFirmware}, {0x0810, canon_tag::kOwner}};

constexpr std::uint16_t kPlaceBits = 0xc000;  ///< say where the data stand, not what they are
constexpr std::uint32_t kMaxRecord = 2048;    ///< bytes of a record that are looked at

class Records {
 public:
  Records(const ByteSource& file, ByteOrder order) : file_(file), order_(order), records_(ReadCiffRecords(file)) {}

  ByteOrder Order() const { return order_; }
  /// The data of the first record of this kind in the heap, or in any; empty if there is none that lies in the file.
  std::vector<std::byte> Find(std::uint16_t tag, std::optional<std::uint16_t> heap = {}) const {
    const auto found = std::ranges::find_if(records_, [&](const auto& record) {
      return (record.tag & ~kPlaceBits) == tag && (!heap || record.heap == *heap);
    });
    if (found == records_.end()) return {};
    return file_.ReadUpTo(found->position, std::min(found->size, kMaxRecord));
  }
  std::string FindText(std::uint16_t tag, std::optional<std::uint16_t> heap = {}) const {
    const auto bytes = Find(tag, heap);
    return std::string(ByteView(bytes, order_).Text());
  }

 private:
  const ByteSource& file_;
  ByteOrder order_;
  std::vector<CiffRecord> records_;
};

std::string UpToZero(const std::string& text) { return text.substr(0, text.find('\0')); }

void TakeModel(ExifData& own, const Records& records) {
  const auto text = records.FindText(kMakeAndModel);
  const auto zero = text.find('\0');
  if (zero != std::string::npos) own.model = platform::TrimRight(UpToZero(text.substr(zero + 1)));
}

void TakeNumbers(ExifData& own, const Records& records) {
  const auto size = records.Find(kPictureInfo);
  if (const ByteView view(size, records.Order()); view.Size() >= 8) {
    own.imageWidth = static_cast<std::int32_t>(view.readLong(0));
    own.imageHeight = static_cast<std::int32_t>(view.readLong(4));
  }
  const auto serial = records.Find(kSerial);
  // Other cameras keep something else there.
  if (serial.size() >= 4 && ModelHolds(own.model, "eos")) {
    ApplyCanonLong(own, canon_tag::kBodyNumber, ByteView(serial, records.Order()).readLong(0));
  }
}

/// The cameras write the name of an encoding in front, with or without the zeros of the standard's field.
void TakeComment(ExifData& own, const Records& records) {
  auto text = records.FindText(kComment, ciff_tag::kImageProperties);
  constexpr std::string_view kCode = "ASCII";
  if (text.starts_with(kCode)) text.erase(0, std::min(text.find_first_not_of('\0', kCode.size()), text.size()));
  own.comment = platform::TrimRight(UpToZero(text));
}

/// A number of stops; thirds are rounded to 12 and 20 32nds.
double Stops(std::int16_t word) {
  const int size = std::abs(int{word}), whole = size / 32, part = size % 32;
  const double fraction = part == 12 ? 1.0 / 3 : part == 20 ? 2.0 / 3 : part / 32.0;
  return std::copysign(whole + fraction, word);
}

/// Long times as they are set, with two digits.
double Rounded(double seconds) {
  if (seconds < 0.3) return seconds;
  const double unit = std::pow(10.0, std::floor(std::log10(seconds)) - 1);
  return std::round(seconds / unit) * unit;
}

/// What the standard's tags tell where there are any.
void TakeExposure(ExifData& own, CanonWords words) {
  constexpr std::size_t kBaseIso = 2, kAperture = 21, kTime = 22;
  if (words.Has(kTime) && words[kAperture] != 0) {
    own.aperture = ApertureText(std::exp2(Stops(words.Signed(kAperture)) / 2));
    own.shutterSpeed = ShutterText(Rounded(std::exp2(-Stops(words.Signed(kTime)))));
  }
  if (words.Has(kBaseIso) && words[kBaseIso] != 0 && own.iso.empty()) {
    own.iso = std::to_string(std::lround(std::exp2(Stops(words.Signed(kBaseIso))) * 100 / 32));
  }
}

ExifData PropertiesOf(const Records& records, const std::string& model) {
  ExifData own;
  TakeModel(own, records);
  if (own.model.empty()) own.model = model;
  TakeNumbers(own, records);
  TakeComment(own, records);
  for (const auto& [record, tag] : kTexts) ApplyCanonString(own, tag, UpToZero(records.FindText(record)));
  for (const auto& [record, tag] : kArrays) {
    const auto bytes = records.Find(record);
    if (bytes.size() < 6) continue;
    const CanonWords words(ByteView(bytes, records.Order()));
    ApplyCanonArray(own, tag, words);
    if (record == kShotInformation) TakeExposure(own, words);
  }
  for (const auto& [record, tag] : kShorts) {
    const auto bytes = records.Find(record);
    if (bytes.size() >= 2) ApplyCanonLong(own, tag, ByteView(bytes, records.Order()).readShort(0));
  }
  return own;
}

}  // namespace

void ReadCrwProperties(ExifData& data, const ByteSource& file) {
  try {
    const Records records(file, ReadCiffRootHeap(file).order);
    AddUnknownFields(data, PropertiesOf(records, data.model));
  } catch (ExifException) {
    return;
  } catch (const platform::UserError&) {
    return;  // where the heaps are needed at all, their reader has told of it
  }
}

}  // namespace ml::metadata
