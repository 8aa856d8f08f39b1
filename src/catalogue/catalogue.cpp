#include "catalogue/catalogue.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "catalogue/list_file.h"
#include "catalogue/messages.h"
#include "catalogue/name_matcher.h"
#include "catalogue/order_file.h"
#include "catalogue/remembered_marks.h"
#include "catalogue/sort.h"
#include "catalogue/tag_file.h"
#include "platform/paths.h"

namespace ml::catalogue {
namespace {

/// Of a medium for reading only, or a directory that is gone, nobody expects that something is kept.
bool MayBeWritten(const std::string& path) {
  if (::access(std::string(platform::DirectoryOf(path)).c_str(), W_OK) != 0) return false;
  return ::access(path.c_str(), R_OK | W_OK) == 0 || errno == ENOENT;
}

/// Where the entry `index` of `files` stands in `list`; for one that is gone, what followed it, else what stood before.
/// -1 if nothing of that is left.
int NearestOf(const std::vector<std::string>& files, int index, const ImageList& list) {
  const int count = static_cast<int>(files.size());
  const auto find = [&](int i) { return list.IndexOfPath(files[static_cast<std::size_t>(i)]); };
  if (index < 0) return -1;
  for (int i = index; i < count; ++i) {
    if (const int place = find(i); place >= 0) return place;
  }
  for (int i = index - 1; i >= 0; --i) {
    if (const int place = find(i); place >= 0) return place;
  }
  return -1;
}

}  // namespace

Catalogue::Catalogue(ImageList& list, ListGate& gate, platform::Interaction& ask, CatalogueObserver& observer)
    : list_(list), gate_(gate), ask_(ask), observer_(observer) {}

void Catalogue::LoadDirectory(const std::string& directory, const std::string& selectFile) {
  if (directory.empty() || Load(platform::normaliseDirectory(directory)) != Outcome::Loaded) return;
  const int index = std::max(list_.FindPath(platform::AbsolutePath(selectFile)), 0);
  SelectEntry(index);
  ShowEntry(index);
}

int Catalogue::LoadFileList(const std::vector<std::string>& paths) {
  leftOut_ = {};
  auto kept = Filter(ExistingImages(paths, {options_.showHidden, options_.bindJpegToEos1DRaw}, leftOut_));
  if (kept.empty()) {
    SaveOnLeave();
    return 0;
  }
  Install(std::move(kept), Coverage::SomeFiles);
  observer_.DirectoryShown(directory_);
  observer_.ListReplaced();
  return list_.Count();
}

void Catalogue::RefreshDirectory() {
  if (list_.Empty()) return LoadDirectory(directory_, {});
  const RememberedMarks before(list_);
  const auto files = list_.files;
  const int current = list_.currentIndex;
  if (Load(directory_) != Outcome::Loaded) return;
  const int index = std::max(NearestOf(files, current, list_), 0);
  before.RestoreSelection(list_);
  if (list_.SelectedCount() == 0) SelectEntry(index);
  if (list_.focusIndex < 0) list_.focusIndex = index;
  ShowEntry(index);
}

/// Everything up to the new list; on Loaded the caller goes on with ShowEntry.
Catalogue::Outcome Catalogue::Load(const std::string& directory) {
  struct stat status {};
  if (::stat(directory.c_str(), &status) != 0) return ask_.message(DirectoryDoesNotExist(directory)), Outcome::Failed;
  if (!S_ISDIR(status.st_mode)) return ask_.message(IsNotADirectory(directory)), Outcome::Failed;
  leftOut_ = {};
  auto images = ScanDirectory(directory, {options_.showHidden, options_.bindJpegToEos1DRaw}, leftOut_);
  if (images.empty()) {
    SaveTags();
    Clear(directory);
    return Outcome::Empty;
  }
  auto kept = Filter(std::move(images));
  if (kept.empty()) {
    SaveOnLeave();
    Clear(directory);
    return Outcome::Empty;
  }
  // Of a directory that could not be read to its end, what its files say of the missing ones must be kept.
  Install(std::move(kept), leftOut_.unreadable ? Coverage::SomeFiles : Coverage::WholeDirectory);
  return Outcome::Loaded;
}

std::vector<std::string> Catalogue::Filter(std::vector<std::string> images) {
  auto filtered = FilterImages(std::move(images), {options_.showHidden, options_.bindJpegToEos1DRaw}, leftOut_);
  if (!filtered.longNames.empty()) ask_.message(RawNamesTooLong(filtered.longNames));
  return std::move(filtered.kept);
}

/// Makes `paths` the list, with order and tags. The directory that stays the same is not saved and read again:
/// its order and tags are carried over, as only the list knows their present state.
void Catalogue::Install(std::vector<std::string> paths, Coverage coverage) {
  const std::string newDirectory(platform::DirectoryOf(paths.front()));
  const bool sameDirectory = !list_.Empty() && newDirectory == memory_.Directory();
  const bool sameVisit = sameDirectory && coverage == Coverage::WholeDirectory && memory_.Covers() == coverage;
  const RememberedMarks before(list_);
  if (sameVisit) {
    if (list_.sortMethod == SortMethod::Custom) {
      paths = Permuted(paths, MatchedOrder({paths.begin(), paths.end()}, list_.files));
    }
  } else {
    SaveOnLeave();
    memory_.Enter(newDirectory, coverage, paths, list_);
  }
  const bool handMadeOrderStays = sameVisit && list_.sortMethod == SortMethod::Custom;
  list_.orderChangedByHand = list_.orderChangedByHand && handMadeOrderStays;
  SortList(paths, list_.sortMethod, list_.reverseSort);
  gate_.LoadList(std::move(paths));
  if (!sameVisit) memory_.ApplyTags(list_);
  if (sameDirectory) before.RestoreTags(list_);
  directory_ = platform::normaliseDirectory(newDirectory);
}

/// Shows a directory without images.
void Catalogue::Clear(const std::string& directory) {
  memory_.Leave();
  list_.orderChangedByHand = false;
  gate_.LoadList({});
  directory_ = directory;
  observer_.DirectoryShown(directory_);
  observer_.ListReplaced();
  observer_.ShowImage(-1);
}

void Catalogue::SelectEntry(int index) {
  list_.SelectOnly(index);
  list_.focusIndex = index;
}

/// Ends a load: tells of it and shows the entry at `index`.
void Catalogue::ShowEntry(int index) {
  observer_.DirectoryShown(directory_);
  observer_.ListReplaced();
  observer_.DirectoryVisited(directory_);
  observer_.ShowImage(index);
}

void Catalogue::SortBy(SortMethod method) {
  if (method != SortMethod::Custom) KeepCustomOrder();
  list_.sortMethod = method;
  ApplySort();
}

void Catalogue::ToggleReverseSort() {
  KeepCustomOrder();
  list_.reverseSort = !list_.reverseSort;
  ApplySort();
}

void Catalogue::MoveTaggedToStart() {
  std::vector<std::string> order = list_.TaggedPaths();
  for (std::size_t i = 0; i < list_.files.size(); ++i) {
    if (!list_.marks[i].tagged) order.push_back(list_.files[i]);
  }
  if (order == list_.files) return;
  list_.customOrder = std::move(order);
  list_.sortMethod = SortMethod::Custom;
  ApplySort();
}

void Catalogue::MoveSelectedTo(int position) {
  if (list_.SelectedCount() == 0) return;
  gate_.MoveSelectedTo(position);
  list_.customOrder = list_.files;
  list_.sortMethod = SortMethod::Custom;
  list_.orderChangedByHand = true;
  observer_.ListReordered();
}

/// Before custom order is left: the order on show is the one to come back to.
void Catalogue::KeepCustomOrder() {
  if (list_.sortMethod == SortMethod::Custom && !list_.Empty()) list_.customOrder = list_.files;
}

void Catalogue::ApplySort() {
  if (list_.Empty()) return;
  auto order = list_.sortMethod == SortMethod::Custom ? list_.customOrder : list_.files;
  SortList(order, list_.sortMethod, list_.reverseSort);
  gate_.Reorder(order);
  observer_.ListReordered();
}

bool Catalogue::SaveCustomOrder() { return memory_.SaveOrder(list_); }

bool Catalogue::SaveTags() { return memory_.SaveTags(list_); }

void Catalogue::SaveCustomOrderAs(const std::string& path) {
  if (!SaveOrderFile(path, list_, SortMethod::Custom)) ask_.message(UnableToWriteFile(path));
}

bool Catalogue::LoadCustomOrder(const std::string& path) {
  const auto oldOrder = list_.customOrder;
  const auto oldMethod = list_.sortMethod;
  std::vector<std::string> scratch;
  LoadOrderFile(path, scratch, list_);
  if (list_.customOrder.empty()) {
    list_.customOrder = oldOrder;
    list_.sortMethod = oldMethod;
    return false;
  }
  list_.sortMethod = SortMethod::Custom;
  ApplySort();
  return true;
}

void Catalogue::SaveTagList(const std::string& path) {
  if (WriteIfChanged(path, BuildTagList(list_.TaggedPaths())) == WriteState::Failed) {
    ask_.message(UnableToWriteFile(path));
  }
}

void Catalogue::LoadTagList(const std::string& path, EarlierTags earlier, TagMatch match) {
  const auto file = ReadListFile(path);
  if (file.state != ReadState::Read) return ask_.message(UnableToReadFile(path));
  if (earlier == EarlierTags::Drop) list_.TagNone();
  ApplyTagList(list_, file.text, match);
}

std::vector<std::string> Catalogue::SaveOnLeave() {
  std::vector<std::string> unsaved;
  if (!SaveOrderOnLeave() && MayBeWritten(memory_.OrderPath())) unsaved.push_back(memory_.OrderPath());
  if (!SaveTags() && MayBeWritten(memory_.TagPath())) unsaved.push_back(memory_.TagPath());
  return unsaved;
}

/// False if it should have been saved and was not.
bool Catalogue::SaveOrderOnLeave() {
  if (!options_.suppressOrderFile) return memory_.SaveOrder(list_);
  if (!list_.orderChangedByHand || list_.Empty()) return true;
  const bool saved = ask_.ask(SaveThumbnailOrderQuestion()) != platform::Button::Yes || memory_.SaveOrder(list_);
  list_.orderChangedByHand = !saved;  // once saved or declined, it is not asked again
  return saved;
}

}  // namespace ml::catalogue
