#include "app/session.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <thread>
#include <utility>

#include "app/messages.h"
#include "app/preferences/thumbnail_limits.h"
#include "app/recent_directories.h"
#include "app/startup/start_files.h"
#include "catalogue/image_item_maker.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/read_directory.h"

namespace ml::app {
namespace {

int WorkerThreads() { return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 16); }

catalogue::ImageItemMaker MakerFor(const settings::Settings& settings) {
  return catalogue::ImageItemMaker(options::ImageFileOptionsOf(settings), options::ColourOptionsOf(settings));
}

}  // namespace

Session::Session(settings::Settings remembered, platform::Interaction& ask, std::function<void(int)> thumbnailReady)
    : settings(std::move(remembered)),
      ask_(ask),
      worker_(list, MakerFor(settings), std::move(thumbnailReady), WorkerThreads()),
      catalogue_(list, worker_, ask, *this) {
  mode = ViewModeOf(settings.catalogue.thumbnailMode);
  options::TakeSortOrder(settings, list);
  SetThumbnailScale(1);
  catalogue_.SetOptions(options::CatalogueOptionsOf(settings));
}

rawconvert::RawDeveloper& Session::Developer() {
  if (!developer_) developer_ = rawconvert::MakeRawDeveloper();
  return *developer_;
}

void Session::SetDeveloper(std::unique_ptr<rawconvert::RawDeveloper> developer) { developer_ = std::move(developer); }

imagefiles::ImageFileOptions Session::ImageOptions() const { return options::ImageFileOptionsOf(settings); }

CommandState Session::State() const {
  auto state = facts_.Gather(*this);
  if (observer_) observer_->AddPaneFacts(state);
  return state;
}

void Session::FilesChanged(const std::vector<std::string>& paths) {
  facts_.Forget();
  std::vector<int> indices;
  for (const auto& path : paths) {
    if (const int index = list.IndexOfPath(path); index >= 0) indices.push_back(index);
  }
  worker_.InvalidateEntries(indices);
}

void Session::RemoveMissing(const std::vector<std::string>& paths) {
  facts_.Forget();
  std::vector<int> gone;
  for (const auto& path : paths) {
    const int index = list.IndexOfPath(path);
    if (index < 0 || platform::Exists(path)) continue;
    gone.push_back(index);
    taggedAndGone_.erase(path);  // of an image that bore the name before
    if (list.marks[static_cast<std::size_t>(index)].tagged) taggedAndGone_.insert(path);
  }
  if (gone.empty()) return;
  std::ranges::sort(gone);
  worker_.RemoveEntries(gone);
  const bool kept =
      list.ValidIndex(list.currentIndex) && list.files[static_cast<std::size_t>(list.currentIndex)] == list.currentPath;
  // So that the next key acts on what has moved up.
  if (list.SelectedCount() == 0 && list.ValidIndex(list.focusIndex)) list.SelectOnly(list.focusIndex);
  ListReplaced();
  if (!kept) ShowImage(list.currentIndex);
}

void Session::BringBackTags(const std::set<std::string>& listedBefore) {
  for (int i = 0; i < list.Count(); ++i) {
    const auto& path = list.files[static_cast<std::size_t>(i)];
    if (!listedBefore.contains(path) && taggedAndGone_.erase(path) > 0) list.SetTag(i, true);
  }
}

std::vector<std::string> Session::TargetPaths() const {
  if (mode != ViewMode::Main) return list.SelectedPaths();
  if (!list.ValidIndex(list.currentIndex)) return {};
  return {list.currentPath};
}

int Session::ThumbnailEdge() const {
  const auto& from = settings.catalogue;
  if (from.thumbnailSize == 2) return std::clamp(from.extraLargeThumbnailSize, kSmallestThumbnail, kLargestThumbnail);
  return from.thumbnailSize == 1 ? 160 : 80;
}

void Session::SetThumbnailScale(double scale) {
  worker_.SetThumbnailSize(static_cast<int>(std::lround(ThumbnailEdge() * std::max(scale, 1.0))));
}

void Session::RemakeThumbnails() { worker_.SetMaker(MakerFor(settings)); }

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

void Session::Leave() {
  worker_.Pause();
  auto& to = settings.catalogue;
  if (!list.currentPath.empty()) to.imageFilename = list.currentPath;
  to.sortMethod = static_cast<int>(list.sortMethod);
  to.reverseSort = list.reverseSort ? 1 : 0;
  to.thumbnailMode = static_cast<int>(mode);
  std::string unsaved;
  for (const auto& path : catalogue_.SaveOnLeave()) unsaved += "\n" + path;
  if (!unsaved.empty()) throw platform::UserError(UnableToSave(unsaved));
}

void Session::DirectoryShown(const std::string& directory) {
  if (observer_) observer_->DirectoryShown(directory);
}

void Session::DirectoryVisited(const std::string& directory) {
  AddRecentDirectory(settings.recentDirectories, directory);
  if (observer_) observer_->RecentDirectoriesChanged();
}

void Session::ListReplaced() {
  facts_.Forget();
  if (observer_) observer_->ListReplaced();
}

void Session::ListReordered() {
  if (observer_) observer_->ListReordered();
}

void Session::ShowImage(int index) {
  if (observer_) return observer_->ShowImage(index);
  list.SetCurrent(index);
}

}  // namespace ml::app
