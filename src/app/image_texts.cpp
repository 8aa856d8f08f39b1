#include "app/image_texts.h"

#include "app/messages.h"
#include "metadata/exif_text.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::app {
namespace {

constexpr std::string_view kProgram = "Marrowlantern";

std::string ShownName(const std::string& path) { return platform::ToDisplayLine(platform::FileName(path)); }

std::string PlaceText(const Session& session, int index) {
  return std::to_string(index + 1) + "/" + std::to_string(session.list.Count());
}

void AddCount(std::string& text, int count, std::string_view one, std::string_view several) {
  if (count > 0) text += "\n" + std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

}  // namespace

std::string StatusText(const Session& session) {
  const int index = session.TargetIndex();
  if (index < 0) return {};
  return ShownName(session.list.files[static_cast<std::size_t>(index)]) + "  " + PlaceText(session, index);
}

std::string SummaryText(Session& session) {
  const auto* data = session.TargetData();
  return data ? platform::ToDisplayUtf8(metadata::GetSummaryText(*data, session.locale)) : std::string();
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
