#include "metadata/xmp.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <string_view>

#include "metadata/exif_text_values.h"
#include "metadata/exif_words.h"
#include "metadata/value_text.h"
#include "metadata/xmp_attributes.h"
#include "metadata/xmp_values.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/xml_subset.h"

namespace ml::metadata {
namespace {

using D = ExifData;

constexpr std::string_view kDescription = "rdf:Description";  ///< its attributes are properties like its children

/// Where the scan stands.
struct Element {
  std::string_view& rest;  ///< behind the tag
  std::string name;        ///< as written; an end tag's begins with "/"
  std::string tag;         ///< what follows the name, with the ">"
};

bool IsName(std::string_view name, std::string_view wanted) {
  return name.size() == wanted.size() && platform::EqualsAsciiFolded(name, wanted);
}
bool Is(const Element& element, std::string_view name) { return IsName(element.name, name); }
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

/// The properties of a flash, each an element or an attribute.
class Flash {
 public:
  static bool Has(std::string_view name) {
    return IsName(name, kFired) || IsName(name, kMode) || IsName(name, kRedEye);
  }

  void Take(std::string_view name, std::string_view value) {
    const bool isTrue = platform::EqualsAsciiFolded(value, "true");
    if (IsName(name, kFired)) word_ = isTrue ? "On" : "Off";
    if (IsName(name, kMode) && platform::LeadingInteger(value) == 3) word_ = "Auto";
    if (IsName(name, kRedEye)) redEye_ = isTrue;
  }
  void TakeAttributes(std::string_view tag) {
    for (XmpAttribute attribute; TakeAttribute(tag, attribute);) Take(attribute.name, attribute.value);
  }
  std::string Text() const { return redEye_ && !word_.empty() ? word_ + " + Red-eye reduction" : word_; }

 private:
  static constexpr std::string_view kFired = "exif:Fired", kMode = "exif:Mode", kRedEye = "exif:RedEyeMode";
  std::string word_;
  bool redEye_ = false;
};

std::string ReadFlash(Element& element) {
  Flash flash;
  flash.TakeAttributes(element.tag);
  if (IsEmpty(element)) return flash.Text();
  const auto end = "/" + element.name;
  while (NextElement(element) && !Is(element, end)) {
    if (Is(element, kDescription)) flash.TakeAttributes(element.tag);
    if (!Flash::Has(element.name)) continue;
    const auto name = element.name;
    flash.Take(name, ReadText(element));
  }
  return flash.Text();
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

const ElementRow* FindRow(std::string_view name) {
  const auto* row = std::ranges::find_if(kElements, [&](const auto& r) { return IsName(name, r.name); });
  return row == std::end(kElements) ? nullptr : row;
}

void TakeProperty(ExifData& data, const ElementRow& row, const std::string& value) {
  if (!value.empty()) row.take(data, value);
}

/// Lists and structures never stand in one.
void TakeAttributes(ExifData& data, std::string_view tag) {
  for (XmpAttribute attribute; TakeAttribute(tag, attribute);) {
    const auto* row = FindRow(attribute.name);
    if (row == nullptr || row->read != ReadText) continue;
    TakeProperty(data, *row, std::string(FirstLine(platform::ReplaceEntities(attribute.value))));
  }
}

}  // namespace

void ReadXmp(ExifData& data, ByteView packet) {
  auto text = packet.Text();
  text.remove_prefix(std::min(text.find('<'), text.size()));  // what names the packet may end in a zero of its own
  text = text.substr(0, text.find('\0'));
  Element element{text, {}, {}};
  while (NextElement(element)) {
    if (Is(element, kDescription)) TakeAttributes(data, element.tag);
    if (const auto* row = FindRow(element.name)) TakeProperty(data, *row, row->read(element));
  }
}

}  // namespace ml::metadata
