#include "app/session.h"

#include <unistd.h>

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
#include "imagefiles/format_table.h"
#include "imagefiles/raw_files.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::app {
namespace {

/// Where galleries are made unless the user says otherwise, and their first page.
constexpr std::string_view kGalleryDirectory = "HTML", kGalleryIndex = "index.htm";

int WorkerThreads() { return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 16); }

catalogue::ImageItemMaker MakerFor(const settings::Settings& settings) {
  return catalogue::ImageItemMaker(options::ImageFileOptionsOf(settings), options::ColourOptionsOf(settings));
}

/// Whether a gallery was made of the images in `directory`.
bool HasGallery(const std::string& directory) {
  if (directory.empty()) return false;
  const auto index = platform::JoinPath(platform::JoinPath(directory, kGalleryDirectory), kGalleryIndex);
  return platform::Exists(index) || platform::Exists(index + "l");
}

bool TaggedBehindUntagged(const catalogue::ImageList& list) {
  const auto untagged = std::ranges::find(list.marks, false, &catalogue::ItemMarks::tagged);
  return std::any_of(untagged, list.marks.end(), [](const auto& marks) { return marks.tagged; });
}

}  // namespace

Session::Session(settings::Settings remembered, platform::Interaction& ask, std::function<void(int)> thumbnailReady)
    : settings(std::move(remembered)),
      ask_(ask),
      worker_(list, MakerFor(settings), std::move(thumbnailReady), WorkerThreads()),
      catalogue_(list, worker_, ask, *this) {
  mode = ViewModeOf(settings.catalogue.thumbnailMode);
  options::TakeSortOrder(settings, list);
  ApplyThumbnailSize();
  catalogue_.SetOptions(options::CatalogueOptionsOf(settings));
}

rawconvert::RawDeveloper& Session::Developer() {
  if (!developer_) developer_ = rawconvert::MakeRawDeveloper();
  return *developer_;
}

void Session::SetDeveloper(std::unique_ptr<rawconvert::RawDeveloper> developer) { developer_ = std::move(developer); }

imagefiles::ImageFileOptions Session::ImageOptions() const { return options::ImageFileOptionsOf(settings); }

imagefiles::BitmapQuality Session::Quality() const {
  return {.highQuality = settings.display.highQualityMode != 0, .greyscale = blackAndWhite};
}

metadata::ExifData* Session::TargetData() const {
  const int index = TargetIndex();
  if (index < 0) return nullptr;
  return &shootingData_.Of(list.files[static_cast<std::size_t>(index)], options::ExifOptionsOf(settings));
}

/// The facts that decide which image commands act on.
CommandState Session::Place() const {
  CommandState state;
  state.mode = mode;
  state.imageCount = list.Count();
  state.currentIndex = list.currentIndex;
  state.focusIndex = list.focusIndex;
  return state;
}

void Session::AddKinds(CommandState& state) const {
  if (const int target = Target(state); target >= 0) {
    state.targetKinds = kinds_.Of(list.files[static_cast<std::size_t>(target)]);
    const auto* item = worker_.Item(target);
    state.targetHasSound = item != nullptr && item->hasSound;
  }
  if (mode == ViewMode::Main) {
    state.kinds = state.targetKinds;
    return;
  }
  for (std::size_t i = 0; i < list.files.size(); ++i) {
    if (list.marks[i].selected) kinds_.Add(list.files[i], state.kinds);
  }
}

CommandState Session::State() const {
  CommandState state = Place();
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
  AddKinds(state);
  state.hasGallery = HasGallery(list.Directory());
  if (observer_) observer_->AddPaneFacts(state);
  state.histogramShown = histogramShown;
  state.shootingDataShown = shootingDataShown;
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

void Session::FilesChanged(const std::vector<std::string>& paths) {
  kinds_.Forget();
  shootingData_.Forget();
  std::vector<int> indices;
  for (const auto& path : paths) {
    if (const int index = list.IndexOfPath(path); index >= 0) indices.push_back(index);
  }
  worker_.InvalidateEntries(indices);
}

void Session::RemoveMissing(const std::vector<std::string>& paths) {
  kinds_.Forget();
  shootingData_.Forget();
  std::vector<int> gone;
  for (const auto& path : paths) {
    const int index = list.IndexOfPath(path);
    if (index < 0 || platform::Exists(path)) continue;
    gone.push_back(index);
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

void Session::BringBackTags(const std::vector<std::string>& paths) {
  for (const auto& path : paths) {
    if (taggedAndGone_.erase(path) > 0) list.SetTag(list.IndexOfPath(path), true);
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

void Session::OptionsChanged() { catalogue_.SetOptions(options::CatalogueOptionsOf(settings)); }

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

void Session::FirstLoad(std::span<const std::string> names) {
  if (!Open(names)) LoadLastDirectory();
}

/// The directory that the program was left in; silent if it is gone.
void Session::LoadLastDirectory() {
  const auto& last = settings.catalogue.imageFilename;
  if (settings.catalogue.loadDirectoryAtStartup == 0 || !list.Empty() || last.empty()) return;
  const auto directory = platform::normaliseDirectory(platform::DirectoryOf(last));
  if (!platform::IsDirectory(directory)) return;
  catalogue_.LoadDirectory(directory, platform::Exists(last) ? last : "");
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
  shootingData_.Forget();
  kinds_.Forget();
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
