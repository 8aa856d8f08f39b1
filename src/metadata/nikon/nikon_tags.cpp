#include "metadata/nikon/nikon_tags.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "metadata/exif_values.h"
#include "metadata/note_values.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::uint16_t kSignedShort = 8;

std::string Text(const NikonValues& values, const IfdEntry& entry) {
  return std::string(platform::TrimRight(readIFDstring(values.source, entry, values.base)));
}

template <auto Member>
void ReadText(const NikonValues& values, const IfdEntry& entry) {
  TakeNoteText(values.data.*Member, Text(values, entry));
}

/// The second of two shorts; the first is 0.
void ReadIso(const NikonValues& values, const IfdEntry& entry) {
  if (!entry.Is(IfdType::Short) || entry.count != 2) return;
  const auto upper = entry.rawValue >> 16, lower = entry.rawValue & 0xffff;
  const auto iso = values.order == ByteOrder::Big ? lower : upper;
  if (iso == 0) return;
  values.data.iso = std::to_string(iso);
  values.data.isoShort = static_cast<std::uint16_t>(iso);
}

/// The synchronisation with the flash. Cameras write "NORMAL" without any flash, too, so it says nothing against the
/// standard's tag, which knows whether one fired.
void ReadFlash(const NikonValues& values, const IfdEntry& entry) {
  constexpr std::string_view off = "Off", normal = "NORMAL";
  auto sync = Text(values, entry);
  if (sync.empty()) sync = off;
  auto& flash = values.data.flash;
  if (flash.empty() || (sync == normal && flash != off)) flash = sync;
}

void ReadLens(const NikonValues& values, const IfdEntry& entry) {
  if (!entry.Is(IfdType::Rational) || entry.count < 2) return;
  auto second = entry;
  second.value += 8;
  const auto shortest = readIFDrational(values.source, values.order, entry, values.base);
  const auto longest = readIFDrational(values.source, values.order, second, values.base);
  if (!shortest || !longest) return;
  values.data.lensMinFocal = *shortest;
  values.data.lensMaxFocal = *longest;
}

/// The block in which the maker's editor keeps its settings tells how far the picture was turned.
void ReadUserRotation(const NikonValues& values, const IfdEntry& entry) {
  constexpr std::uint32_t place = 0x559;
  if (!entry.Is(IfdType::Undefined) || entry.count < place + 2) return;
  const auto stored = values.source.ReadNumber(values.base + entry.value + place, 2, ByteOrder::Little);
  const auto degrees = (static_cast<std::int16_t>(stored) + 720) % 360;
  // Versions that arrange the block otherwise have something else there.
  if (degrees >= 0 && degrees % 90 == 0) values.data.userRotation = degrees;
}

void ReadDriveMode(const NikonValues& values, const IfdEntry& entry) {
  constexpr CodeWord modes[] = {{0, "Single frame shooting"}, {1, "Continuous"}, {2, "Self-timer"}};
  const auto bits = EntryNumber(entry, values.order);
  if (bits) TakeNoteText(values.data.driveMode, WordOf(modes, *bits & 3));
}

void ReadHueAdjustment(const NikonValues& values, const IfdEntry& entry) {
  const auto hue = EntryNumber(entry, values.order);
  if (hue) values.data.hueAdjustment = static_cast<std::int16_t>(*hue);
}

/// What a camera calls a setting, and the word that is shown for it.
struct TextWord {
  std::string_view text, word;
};
/// The modes with an "a" are those of the D70; its manual, page "Suiting Colors to a Workflow", tells their spaces.
constexpr TextWord kColorModes[] = {
    {"MODE1", "sRGB 1"}, {"MODE1a", "sRGB 1"}, {"MODE2", "Adobe RGB"}, {"MODE3", "sRGB 2"}, {"MODE3a", "sRGB 2"}};
constexpr TextWord kNoiseReductions[] = {{"FPNR", "Fixed pattern"}};

/// Texts without a word are shown as they are.
template <auto Member, auto& Words>
void ReadTextWord(const NikonValues& values, const IfdEntry& entry) {
  const auto text = Text(values, entry);
  const auto* found = std::ranges::find(Words, text, &TextWord::text);
  TakeNoteText(values.data.*Member, found == std::end(Words) ? text : found->word);
}

/// The fine tuning of the white balance, -3 to 3. Kept: every pair of signed shorts is taken for one, whatever its tag,
/// and only what stands in the upper half of the value field shows.
void AddWhiteBalanceMagnitude(ExifData& data, const IfdEntry& entry) {
  const auto magnitude = static_cast<std::int16_t>(entry.rawValue >> 16);
  if (data.whiteBalance.empty() || magnitude == 0) return;
  data.whiteBalance += (magnitude < 0 ? "-" : "+") + std::to_string(magnitude < 0 ? -magnitude : magnitude);
}

enum class Forms { Both, OnlyBlock };

struct TagRow {
  std::uint16_t tag;
  Forms forms;
  void (*read)(const NikonValues& values, const IfdEntry& entry);
};
using D = ExifData;
constexpr TagRow kTags[] = {
    {0x02, Forms::Both, ReadIso},
    {0x04, Forms::Both, ReadText<&D::imageQuality>},
    {0x05, Forms::Both, ReadText<&D::whiteBalance>},
    {0x06, Forms::Both, ReadText<&D::sharpness>},
    {0x07, Forms::Both, ReadText<&D::afMode>},
    {0x08, Forms::Both, ReadFlash},
    {0x81, Forms::OnlyBlock, ReadText<&D::tone>},
    {0x84, Forms::Both, ReadLens},
    {0x89, Forms::OnlyBlock, ReadDriveMode},
    {0x8d, Forms::OnlyBlock, ReadTextWord<&D::colorMode, kColorModes>},
    {0x92, Forms::OnlyBlock, ReadHueAdjustment},
    {0x95, Forms::OnlyBlock, ReadTextWord<&D::noiseReduction, kNoiseReductions>},
    {0xe01, Forms::Both, ReadUserRotation},
};

}  // namespace

void TakeNikonTag(const NikonValues& values, const IfdEntry& entry, MakerNoteForm form) {
  const auto* row = std::ranges::find(kTags, entry.tag, &TagRow::tag);
  const bool read = row != std::end(kTags) && (row->forms == Forms::Both || form == MakerNoteForm::Block);
  if (read) row->read(values, entry);
  if (entry.type == kSignedShort) AddWhiteBalanceMagnitude(values.data, entry);
}

}  // namespace ml::metadata
