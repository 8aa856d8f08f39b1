#include "batch/slideshow_caption.h"

#include <algorithm>

#include "platform/ordered_replacements.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

struct Place {
  std::string_view token;
  int value;
};

/// A setting is one line.
constexpr std::string_view kLineEndEscape = "\\n";

}  // namespace

std::vector<std::string> CaptionLines(std::string_view expanded, int number, int count) {
  const Place places[] = {{"@imageNumber@", number}, {"@numberOfImages@", count}};
  const auto filled =
      platform::ReplaceInOrder(expanded, places, [](const Place& place) { return std::to_string(place.value); });
  const auto text = platform::ReplaceAll(filled, kLineEndEscape, "\n");
  std::vector<std::string> lines;
  for (const auto line : platform::SplitLines(platform::Trim(text))) lines.emplace_back(platform::Trim(line));
  return lines;
}

int LinesThatFit(std::size_t lines, int screenHeight, int lineHeight) {
  const int room = screenHeight / 2 / std::max(lineHeight, 1);
  return static_cast<int>(std::min<std::size_t>(lines, static_cast<std::size_t>(std::max(room, 0))));
}

}  // namespace ml::batch
