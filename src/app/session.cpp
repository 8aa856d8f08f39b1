#include "app/session.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <thread>
#include <utility>

#include "app/recent_directories.h"
#include "app/startup/start_files.h"
#include "catalogue/image_item_maker.h"
#include "imagefiles/format_table.h"
#include "imagefiles/raw_files.h"
#include "options/engine_options.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

/// "ExtraLargeThumbnailSize" is a number that anybody may have typed.
constexpr int kSmallestEdge = 16, kLargestEdge = 2000;

int WorkerThreads() { return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 16); }

bool IsDirectory(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool TaggedBehindUntagged(const catalogue::ImageList& list) {
  const auto untagged = std::ranges::find(list.marks, false, &catalogue::ItemMarks::tagged);
  return std::any_of(untagged, list.marks.end(), [](const auto& marks) { return marks.tagged; });
}

}  // namespace

Session::Session(settings::Settings remembered, platform::Interaction& ask, std::function<void(int)> thumbnailReady)
    : settings(std::move(remembered)),
      ask_(ask),
      worker_(list, catalogue::ImageItemMaker(options::ImageFileOptionsOf(settings)), std::move(thumbnailReady),
              WorkerThreads()),
      catalogue_(list, worker_, ask, *this) {
  mode = ViewModeOf(settings.catalogue.thumbnailMode);
  options::TakeSortOrder(settings, list);
  ApplyThumbnailSize();
  catalogue_.SetOptions(options::CatalogueOptionsOf(settings));
}

imagefiles::ImageFileOptions Session::ImageOptions() const { return options::ImageFileOptionsOf(settings); }

imagefiles::BitmapQuality Session::Quality() const {
  return {.highQuality = settings.display.highQualityMode != 0, .greyscale = blackAndWhite};
}

const metadata::ExifData* Session::TargetData() const {
  // Without the facts that take shooting data to gather.
  const int index = Target(
      {.mode = mode, .imageCount = list.Count(), .currentIndex = list.currentIndex, .focusIndex = list.focusIndex});
  if (index < 0) return nullptr;
  return &shootingData_.Of(list.files[static_cast<std::size_t>(index)], options::ExifOptionsOf(settings));
}

CommandState Session::State() const {
  CommandState state;
  state.mode = mode;
  state.imageCount = list.Count();
  state.currentIndex = list.currentIndex;
  state.focusIndex = list.focusIndex;
  state.selectedCount = list.SelectedCount();
  state.taggedCount = list.TaggedCount();
  const int target = Target(state);
  state.targetTagged = target >= 0 && list.marks[static_cast<std::size_t>(target)].tagged;
  state.taggedBehindUntagged = TaggedBehindUntagged(list);
  state.wraparound = settings.catalogue.wraparound != 0;
  state.hasParentDirectory = !catalogue_.Directory().empty() && catalogue_.Directory() != "/";
  state.hasCustomOrder = !list.customOrder.empty();
  state.sortMethod = list.sortMethod;
  state.reverseSort = list.reverseSort;
  state.thumbnailSizeMode = settings.catalogue.thumbnailSize;
  state.fullView = settings.catalogue.fullView != 0;
  state.highQuality = settings.display.highQualityMode != 0;
  state.blackAndWhite = blackAndWhite;
  state.statusBarShown = statusBarShown;
  state.histogramShown = histogramShown;
  state.flashingHighlights = settings.display.highlightBlink != 0;
  state.focusPoints = settings.display.showFocusPoints != 0;
  state.targetFromCanonEos = mode != ViewMode::Thumbnails && TargetFromCanonEos();
  return state;
}

bool Session::TargetFromCanonEos() const {
  const auto* data = TargetData();
  if (data == nullptr || data->model.find("Canon EOS") == std::string::npos) return false;
  const auto* row = imagefiles::FindFormat(data->path);
  if (row != nullptr && row->format == imagefiles::Format::Tiff) return data->isEos1DRaw;  // without reading it again
  return imagefiles::IsRawFile(data->path) || (row != nullptr && row->format == imagefiles::Format::Jpeg);
}

int Session::ThumbnailEdge() const {
  const auto& from = settings.catalogue;
  if (from.thumbnailSize == 2) return std::clamp(from.extraLargeThumbnailSize, kSmallestEdge, kLargestEdge);
  return from.thumbnailSize == 1 ? 160 : 80;
}

void Session::SetThumbnailSizeMode(int sizeMode) {
  settings.catalogue.thumbnailSize = sizeMode;
  ApplyThumbnailSize();
}

void Session::SetThumbnailScale(double scale) {
  thumbnailScale_ = std::max(scale, 1.0);
  ApplyThumbnailSize();
}

void Session::ApplyThumbnailSize() {
  worker_.SetThumbnailSize(static_cast<int>(std::lround(ThumbnailEdge() * thumbnailScale_)), true);
}

bool Session::Open(std::span<const std::string> paths) {
  const auto start = CollectStartFiles(paths, settings.catalogue.bindJpegToEos1DRaw != 0);
  for (const auto& path : start.missing) {
    std::fprintf(stderr, "marrowlantern: no such file or directory: %s\n", path.c_str());
  }
  if (!start.directory.empty()) {
    catalogue_.LoadDirectory(start.directory, "");
    return true;
  }
  if (start.files.empty()) return false;
  if (catalogue_.LoadFileList(start.files) == 0) return true;
  list.SelectOnly(0);
  list.focusIndex = 0;
  ShowImage(0);
  return true;
}

void Session::FirstLoad(std::span<const std::string> names) {
  if (!Open(names)) LoadLastDirectory();
}

/// The directory that the program was left in; silent if it is gone.
void Session::LoadLastDirectory() {
  const auto& last = settings.catalogue.imageFilename;
  if (settings.catalogue.loadDirectoryAtStartup == 0 || !list.Empty() || last.empty()) return;
  const auto directory = platform::normaliseDirectory(platform::DirectoryOf(last));
  if (!IsDirectory(directory)) return;
  catalogue_.LoadDirectory(directory, ::access(last.c_str(), F_OK) == 0 ? last : "");
}

void Session::Leave() {
  worker_.Pause();
  catalogue_.SaveOnLeave();
  auto& to = settings.catalogue;
  if (!list.currentPath.empty()) to.imageFilename = list.currentPath;
  to.sortMethod = static_cast<int>(list.sortMethod);
  to.reverseSort = list.reverseSort ? 1 : 0;
  to.thumbnailMode = static_cast<int>(mode);
}

void Session::DirectoryShown(const std::string& directory) {
  if (observer_) observer_->DirectoryShown(directory);
}

void Session::DirectoryVisited(const std::string& directory) {
  AddRecentDirectory(settings.recentDirectories, directory);
  if (observer_) observer_->RecentDirectoriesChanged();
}

void Session::ListReplaced() {
  shootingData_.Forget();
  if (observer_) observer_->ListReplaced();
}

void Session::ListReordered() {
  if (observer_) observer_->ListReordered();
}

void Session::ShowImage(int index) {
  if (observer_) return observer_->ShowImage(index);
  list.currentIndex = list.ValidIndex(index) ? index : -1;
  list.currentPath = list.currentIndex < 0 ? "" : list.files[static_cast<std::size_t>(index)];
}

}  // namespace ml::app
