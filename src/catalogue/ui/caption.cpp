#include "catalogue/ui/caption.h"

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::catalogue::ui {
namespace {

constexpr std::size_t kFewestCharacters = 3;

std::string Cut(const std::string& stem, std::size_t count) {
  return std::string(platform::FirstCodePoints(stem, count)) + "...";
}

}  // namespace

std::string CutCaption(std::string_view path, double room, const TextWidth& width) {
  const auto fits = [&](const std::string& text) { return width(text) <= room; };
  auto name = platform::ToDisplayUtf8(platform::FileName(path));
  if (fits(name)) return name;
  auto stem = platform::ToDisplayUtf8(platform::SplitPath(path).stem);
  if (fits(stem)) return stem;
  const auto length = platform::CodePointCount(stem);
  if (length <= kFewestCharacters || !fits(Cut(stem, kFewestCharacters))) return {};
  // The longest cut that fits, by halving: measuring every length of a long name costs too much in a paint.
  std::size_t fitting = kFewestCharacters, tooLong = length;
  while (tooLong - fitting > 1) {
    const auto middle = fitting + (tooLong - fitting) / 2;
    (fits(Cut(stem, middle)) ? fitting : tooLong) = middle;
  }
  return Cut(stem, fitting);
}

}  // namespace ml::catalogue::ui
