#include "metadata/xmp.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <string_view>

#include "metadata/exif_text_values.h"
#include "metadata/exif_words.h"
#include "metadata/value_text.h"
#include "metadata/xmp_values.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/xml_subset.h"

namespace ml::metadata {
namespace {

using D = ExifData;

/// Where the scan stands.
struct Element {
  std::string_view& rest;  ///< behind the tag
  std::string name;        ///< as written; an end tag's begins with "/"
  std::string tag;         ///< what follows the name, with the ">"
};

bool Is(const Element& element, std::string_view name) {
  return element.name.size() == name.size() && platform::EqualsAsciiFolded(element.name, name);
}
bool IsEmpty(const Element& element) { return element.tag.ends_with("/>"); }

/// Goes on to the next tag with a name. False at the end.
bool NextElement(Element& element) {
  while (platform::ReadTagFromString(element.rest, element.tag)) {
    if (platform::ParseTagName(element.tag, element.name)) return true;
  }
  return false;
}

std::string ReadText(Element& element) {
  if (IsEmpty(element)) return {};
  element.tag = ">";  // attributes say nothing of the value
  std::string value;
  const bool complete = platform::ReadElementValueFromString(element.rest, element.tag, element.name, value);
  return complete ? std::string(FirstLine(value)) : std::string();
}

/// The first entry of a list, which is read to its end.
std::string ReadFirstEntry(Element& element) {
  if (IsEmpty(element)) return {};
  const auto end = "/" + element.name;
  std::string first;
  bool found = false;
  while (NextElement(element) && !Is(element, end)) {
    if (found || !Is(element, "rdf:li")) continue;
    first = ReadText(element);
    found = true;
  }
  return first;
}

std::string ReadFlash(Element& element) {
  if (IsEmpty(element)) return {};
  const auto end = "/" + element.name;
  std::string word;
  bool redEye = false;
  while (NextElement(element) && !Is(element, end)) {
    if (Is(element, "exif:Fired")) {
      word = platform::EqualsAsciiFolded(ReadText(element), "true") ? "On" : "Off";
    } else if (Is(element, "exif:Mode")) {
      if (platform::LeadingInteger(ReadText(element)) == 3) word = "Auto";
    } else if (Is(element, "exif:RedEyeMode")) {
      redEye = platform::EqualsAsciiFolded(ReadText(element), "true");
    }
  }
  return redEye && !word.empty() ? word + " + Red-eye reduction" : word;
}

// What becomes of a value; it is not empty.

template <auto Member>
void TakeText(ExifData& data, const std::string& text) {
  if ((data.*Member).empty()) data.*Member = text;
}
template <auto Member, auto Word>
void TakeWord(ExifData& data, const std::string& text) {
  TakeText<Member>(data, std::string(Word(static_cast<std::uint32_t>(platform::LeadingInteger(text)))));
}
template <auto Member>
void TakeRational(ExifData& data, const std::string& text) {
  if (data.*Member == 0) data.*Member = ParseRational(text);
}
void TakeShutter(ExifData& data, const std::string& text) {
  TakeText<&D::shutterSpeed>(data, ShutterText(ParseRational(text)));
}
void TakeAperture(ExifData& data, const std::string& text) {
  TakeText<&D::aperture>(data, ApertureText(ParseRational(text)));
}
void TakeApexAperture(ExifData& data, const std::string& text) {
  TakeText<&D::aperture>(data, ApertureText(std::exp2(ParseRational(text) / 2)));
}
void TakeDate(ExifData& data, const std::string& text) { TakeText<&D::dateTime>(data, XmpDateText(text)); }
void TakeFocalLength35(ExifData& data, const std::string& text) {
  if (data.focalLength35 == 0) data.focalLength35 = platform::LeadingInteger(text);
}
void TakeLens(ExifData& data, const std::string& text) {
  if (data.lensMinFocal != 0 || data.lensMaxFocal != 0) return;
  const auto range = FocalRangeOf(text).value_or(FocalRange());
  data.lensMinFocal = range.least;
  data.lensMaxFocal = range.most;
}

struct ElementRow {
  std::string_view name;
  std::string (*read)(Element& element);
  void (*take)(ExifData& data, const std::string& text);
};

constexpr ElementRow kElements[] = {
    {"exif:ExposureTime", ReadText, TakeShutter},
    {"exif:FNumber", ReadText, TakeAperture},
    {"exif:ApertureValue", ReadText, TakeApexAperture},
    {"exif:ExposureProgram", ReadText, TakeWord<&D::exposureMode, ExposureModeWord>},
    {"exif:ISOSpeedRatings", ReadFirstEntry, TakeText<&D::iso>},
    {"dc:creator", ReadFirstEntry, TakeText<&D::owner>},
    {"exif:DateTimeOriginal", ReadText, TakeDate},
    {"exif:MeteringMode", ReadText, TakeWord<&D::meteringMode, MeteringModeWord>},
    {"exif:Contrast", ReadText, TakeWord<&D::contrast, LevelWord>},
    {"exif:Saturation", ReadText, TakeWord<&D::saturation, LevelWord>},
    {"exif:Sharpness", ReadText, TakeWord<&D::sharpness, LevelWord>},
    {"exif:LightSource", ReadText, TakeWord<&D::whiteBalance, WhiteBalanceWord>},
    {"exif:FocalLength", ReadText, TakeRational<&D::focalLength>},
    {"exif:FocalLengthIn35mmFilm", ReadText, TakeFocalLength35},
    {"exif:Flash", ReadFlash, TakeText<&D::flash>},
    {"tiff:Make", ReadText, TakeText<&D::make>},
    {"tiff:Model", ReadText, TakeText<&D::model>},
    {"exif:ExposureBiasValue", ReadText, TakeRational<&D::exposureCompensation>},
    {"aux:SerialNumber", ReadText, TakeText<&D::bodySerial>},
    {"aux:Lens", ReadText, TakeLens},
};

}  // namespace

void ReadXmp(ExifData& data, ByteView packet) {
  auto text = packet.Text(0, packet.Size());
  text.remove_prefix(std::min(text.find('<'), text.size()));  // what names the packet may end in a zero of its own
  text = text.substr(0, text.find('\0'));
  Element element{text, {}, {}};
  while (NextElement(element)) {
    const auto* row = std::ranges::find_if(kElements, [&](const auto& r) { return Is(element, r.name); });
    if (row == std::end(kElements)) continue;
    if (const auto value = row->read(element); !value.empty()) row->take(data, value);
  }
}

}  // namespace ml::metadata
