#include "batch/rename_tokens.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

#include "platform/dates.h"
#include "platform/name_pieces.h"
#include "platform/numbers.h"
#include "platform/ordered_replacements.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

constexpr std::int64_t kNumbersPerFolder = 10'000;
/// In bytes. No name may be that long; it bounds what a style of many tokens can cost.
constexpr std::size_t kMostNameGrowth = 4096;

struct TokenContext {
  const RenameStyle& style;
  const RenameFacts& facts;
  platform::PathParts name;
  std::int64_t number;
  std::tm time;
  bool& numbered;
};

struct TokenRow {
  std::string_view token;
  std::string (*value)(const TokenContext& context);
};

template <auto Member>
std::string Text(const TokenContext& c) {
  return c.facts.*Member;
}

std::string FocalLength(const TokenContext& c) { return platform::FixedNumber(c.facts.focalLength, 0); }
std::string Shutter(const TokenContext& c) { return platform::ReplaceAll(c.facts.shutterSpeed, "1/", ""); }

/// The lowest twelve bits of the body number, which may have any number of digits.
std::string BodyCode(const TokenContext& c) {
  constexpr unsigned kMask = 0xFFF;
  unsigned number = 0;
  for (const char digit : platform::Trim(c.facts.bodySerial)) {
    if (digit < '0' || digit > '9') break;
    number = (number * 10 + static_cast<unsigned>(digit - '0')) & kMask;
  }
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "%03X", number);
  return text.data();
}

std::string Model(const TokenContext& c) { return ShortModelName(c.facts.model); }
std::string Number(const TokenContext& c) { return ModelNumber(c.facts.model); }

std::int64_t Sequence(const TokenContext& c) { return c.facts.imageNumber != 0 ? c.facts.imageNumber : c.number; }
std::string SequenceFolder(const TokenContext& c) { return platform::PaddedNumber(Sequence(c) / kNumbersPerFolder, 3); }
std::string SequenceInFolder(const TokenContext& c) {
  return platform::PaddedNumber(Sequence(c) % kNumbersPerFolder, 4);
}
std::string WholeSequence(const TokenContext& c) { return platform::PaddedNumber(Sequence(c), 7); }
std::string BurstFrame(const TokenContext& c) { return platform::PaddedNumber(c.facts.continuousFrame, 2); }

/// 1 for the first shot of a stitched series; 0 for all other images. Some cameras keep another number in that place.
std::int32_t StitchShot(const RenameFacts& facts) {
  constexpr std::int32_t kLastLetter = 26;
  const bool counts = platform::AsciiLower(facts.model).find("eos") == std::string::npos;
  return counts && facts.stitchShot >= 1 && facts.stitchShot <= kLastLetter ? facts.stitchShot : 0;
}

std::string ImageFormat(const TokenContext& c) {
  if (platform::EqualsAsciiFolded(c.name.extension, ".crw")) return "CRW";
  if (const auto shot = StitchShot(c.facts); shot > 0) return std::string("ST") + static_cast<char>('A' + shot - 1);
  if (platform::EqualsAsciiFolded(c.name.extension, ".avi")) return "MVI";
  if (platform::EqualsAsciiFolded(c.name.extension, ".nef")) return "NEF";
  return "IMG";
}

std::string Extension(const TokenContext& c) {
  return std::string(c.name.extension.empty() ? c.name.extension : c.name.extension.substr(1));
}
std::string RunningNumber(const TokenContext& c) {
  c.numbered = true;
  return platform::PaddedNumber(c.number, c.style.digits);
}
std::string OriginalStem(const TokenContext& c) { return std::string(c.name.stem); }

/// `Form` as for strftime. Names of months and days are those of the user's language.
template <char... Form>
std::string Date(const TokenContext& c) {
  constexpr std::size_t kMostCharacters = 15;
  constexpr std::array kForm{Form..., '\0'};
  std::array<char, 128> text{};
  const auto length = std::strftime(text.data(), text.size(), kForm.data(), &c.time);
  return std::string(platform::FirstCodePoints({text.data(), length}, kMostCharacters));
}

// The order is behaviour: a value is open to the tokens behind its own.
constexpr TokenRow kBeforePieces[] = {
    {"%F", FocalLength},
    {"%A", Text<&RenameFacts::aperture>},
    {"%s", Shutter},
    {"%i", Text<&RenameFacts::iso>},
    {"%c", Text<&RenameFacts::bodySerial>},
    {"%C", BodyCode},
    {"%T", Model},
    {"%v", Number},
    {"%q", SequenceFolder},
    {"%r", SequenceInFolder},
    {"%N", WholeSequence},
    {"%e", BurstFrame},
    {"%f", ImageFormat},
    {"%x", Extension},
    {"%n", RunningNumber},
    {"%o", OriginalStem},
};
constexpr TokenRow kBehindPieces[] = {
    {"%d", Date<'%', 'y', '%', 'm', '%', 'd'>},
    {"%Y", Date<'%', 'Y'>},
    {"%y", Date<'%', 'y'>},
    {"%m", Date<'%', 'm'>},
    {"%b", Date<'%', 'b'>},
    {"%a", Date<'%', 'a'>},
    {"%D", Date<'%', 'd'>},
    {"%W", Date<'%', 'W'>},
    {"%t", Date<'%', 'H', '%', 'M', '%', 'S'>},
    {"%H", Date<'%', 'H'>},
    {"%I", Date<'%', 'I'>},
    {"%M", Date<'%', 'M'>},
    {"%S", Date<'%', 'S'>},
};

constexpr std::string_view kDigits = "0123456789";

}  // namespace

std::string ShortModelName(std::string_view model) {
  constexpr auto kNone = std::string_view::npos;
  for (auto space = model.find(' '); space != kNone; space = model.find(' ')) {
    const auto digit = model.find_first_of(kDigits);
    if (digit == kNone || digit < space) break;
    model.remove_prefix(space + 1);
  }
  if (const auto space = model.find(' '); space != kNone && space > 0) model = model.substr(0, space);
  std::string name(model);
  std::ranges::replace_if(
      name, [](char c) { return std::string_view("\\/:*?\"<>|").find(c) != kNone; }, '_');
  while (name.find("__") != kNone) name = platform::ReplaceAll(name, "__", "_");
  return std::string(platform::Trim(name));
}

std::string ModelNumber(std::string_view model) {
  auto name = ShortModelName(model);
  auto start = name.find_first_of(kDigits);
  if (start == std::string::npos) return name;
  while (start > 0 && name[start - 1] != '-') --start;
  return name.substr(start);
}

ExpandedStyle ExpandStyle(const RenameStyle& style, const RenameImage& image, std::int64_t number) {
  ExpandedStyle result;
  const TokenContext context{.style = style,
                             .facts = image.facts,
                             .name = platform::SplitPath(image.name),
                             .number = number,
                             .time = platform::LocalTime(static_cast<std::time_t>(image.facts.shootingTime)),
                             .numbered = result.numbered};
  const auto valueOf = [&](const TokenRow& row) { return row.value(context); };
  auto text = platform::ReplaceInOrder(style.format, kBeforePieces, valueOf, kMostNameGrowth);
  text = platform::ReplaceNamePieces(std::move(text), style.format, context.name.stem);
  result.text = platform::ReplaceInOrder(text, kBehindPieces, valueOf, kMostNameGrowth);
  return result;
}

}  // namespace ml::batch
