#include "app/image_texts.h"

#include "app/messages.h"
#include "app/preferences/place_tokens.h"
#include "metadata/format_strings/format_strings.h"
#include "options/engine_options.h"
#include "platform/ordered_replacements.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::app {
namespace {

constexpr std::string_view kProgram = "Marrowlantern";
/// A setting is one line.
constexpr std::string_view kLineEndEscape = "\\n";

std::string ShownName(const std::string& path) { return platform::ToDisplayLine(platform::FileName(path)); }

struct PlaceValue {
  std::string_view token;
  int value;
};

std::string Expanded(const Session& session, std::string_view format) {
  auto* data = session.TargetData();
  if (data == nullptr) return {};
  const auto options = options::ExifOptionsOf(session.settings);
  return metadata::ExpandFormatString(format, {*data, options, session.locale});
}

void AddCount(std::string& text, int count, std::string_view one, std::string_view several) {
  if (count > 0) text += "\n" + std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

}  // namespace

std::string ExpandedLine(const Session& session, std::string_view format) {
  const PlaceValue places[] = {{kImageNumberToken, session.TargetIndex() + 1},
                               {kNumberOfImagesToken, session.list.Count()}};
  return platform::ToDisplayLine(platform::ReplaceInOrder(
      Expanded(session, format), places, [](const PlaceValue& place) { return std::to_string(place.value); }));
}

std::string ExpandedText(const Session& session, std::string_view format) {
  return platform::ToDisplayUtf8(Expanded(session, platform::ReplaceAll(format, kLineEndEscape, "\n")));
}

std::string StatusText(const Session& session) {
  return ExpandedLine(session, session.settings.shootingData.exifFormatString);
}

std::string SummaryText(const Session& session) {
  const auto& formats = session.settings.shootingData;
  return ExpandedText(session,
                      IsFilmStrip(session.mode) ? formats.filmStripExifFormatString : formats.mainExifFormatString);
}

std::string TitleText(const Session& session) {
  std::string what;
  if (session.mode != ViewMode::Thumbnails && session.list.ValidIndex(session.list.currentIndex)) {
    what = ShownName(session.list.currentPath);
  } else {
    what = platform::ToDisplayLine(session.Images().Directory());
  }
  return what.empty() ? std::string(kProgram) : what + " - " + std::string(kProgram);
}

std::string EmptyText(const Session& session) {
  const auto& directory = session.Images().Directory();
  if (directory.empty()) return std::string(kNoDirectoryYet);
  auto text = "No images in " + (directory == "/" ? directory : ShownName(directory));
  const auto& leftOut = session.Images().NotTaken();
  if (leftOut.unreadable) return text + "\nThe directory cannot be read";
  AddCount(text, leftOut.hiddenImages, "hidden image", "hidden images");
  AddCount(text, leftOut.longNames, "raw file with too long a name", "raw files with too long names");
  AddCount(text, leftOut.otherFiles, "other file", "other files");
  return text;
}

std::string ThumbnailsMadeText(const Session& session) {
  const int count = session.list.Count();
  const int made = session.Worker().FinishedCount();
  if (made >= count) return {};
  return std::to_string(static_cast<long long>(made) * 100 / count) + " % made";
}

}  // namespace ml::app
