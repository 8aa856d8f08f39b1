#include "catalogue/image_list.h"

#include <algorithm>

#include "catalogue/name_matcher.h"
#include "platform/paths.h"

namespace ml::catalogue {

namespace {

void SetAll(std::vector<ItemMarks>& marks, bool ItemMarks::*mark, bool on) {
  for (auto& item : marks) item.*mark = on;
}

int CountOf(const std::vector<ItemMarks>& marks, bool ItemMarks::*mark) {
  return static_cast<int>(std::ranges::count(marks, true, mark));
}

std::vector<std::string> PathsWith(const ImageList& list, bool ItemMarks::*mark) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < list.files.size(); ++i) {
    if (list.marks[i].*mark) paths.push_back(list.files[i]);
  }
  return paths;
}

/// Where `index` goes when the entries at `removed` (ascending) are taken out of a list of which `count` stay.
int IndexAfterRemoval(int index, const std::vector<int>& removed, int count) {
  if (index < 0) return -1;
  const auto before = std::ranges::lower_bound(removed, index) - removed.begin();
  return std::min(index - static_cast<int>(before), count - 1);
}

/// `oldIndices` names each entry once, in the new order.
void Arrange(ImageList& list, const std::vector<int>& oldIndices) {
  const auto newIndex = [&](int old) {
    return list.ValidIndex(old) ? static_cast<int>(std::ranges::find(oldIndices, old) - oldIndices.begin()) : -1;
  };
  list.currentIndex = newIndex(list.currentIndex);
  list.focusIndex = newIndex(list.focusIndex);
  list.files = Permuted(list.files, oldIndices);
  list.marks = Permuted(list.marks, oldIndices);
}

}  // namespace

std::string ImageList::Directory() const {
  return files.empty() ? std::string() : std::string(platform::DirectoryOf(files.front()));
}

int ImageList::IndexOfPath(std::string_view path) const {
  const auto found = std::ranges::find(files, path);
  return found == files.end() ? -1 : static_cast<int>(found - files.begin());
}

int ImageList::FindPath(std::string_view path) const {
  const int exact = IndexOfPath(path);
  if (exact >= 0 || path.empty()) return exact;
  const auto folded = platform::nameFold(path);
  const auto found = std::ranges::find_if(files, [&](const auto& file) { return platform::nameFold(file) == folded; });
  return found == files.end() ? -1 : static_cast<int>(found - files.begin());
}

void ImageList::SetTag(int index, bool on) {
  if (ValidIndex(index)) marks[static_cast<std::size_t>(index)].tagged = on;
}

void ImageList::SetTagByPath(std::string_view path, bool on) { SetTag(FindPath(path), on); }

void ImageList::ToggleTag(int index) {
  if (ValidIndex(index)) SetTag(index, !marks[static_cast<std::size_t>(index)].tagged);
}

void ImageList::SelectAll() { SetAll(marks, &ItemMarks::selected, true); }

void ImageList::SelectNone() { SetAll(marks, &ItemMarks::selected, false); }

void ImageList::InvertSelection() {
  for (auto& item : marks) item.selected = !item.selected;
}

void ImageList::SelectTagged() {
  for (auto& item : marks) item.selected = item.tagged;
}

void ImageList::SetCurrent(int index) {
  currentIndex = ValidIndex(index) ? index : -1;
  currentPath = currentIndex < 0 ? std::string() : files[static_cast<std::size_t>(index)];
}

void ImageList::SelectOnly(int index) {
  SelectNone();
  if (ValidIndex(index)) marks[static_cast<std::size_t>(index)].selected = true;
}

void ImageList::TagSelected() {
  for (auto& item : marks) item.tagged = item.tagged || item.selected;
}

void ImageList::UntagSelected() {
  for (auto& item : marks) item.tagged = item.tagged && !item.selected;
}

void ImageList::TagNone() { SetAll(marks, &ItemMarks::tagged, false); }

int ImageList::SelectedCount() const { return CountOf(marks, &ItemMarks::selected); }

int ImageList::TaggedCount() const { return CountOf(marks, &ItemMarks::tagged); }

std::vector<int> ImageList::SelectedIndices() const {
  std::vector<int> indices;
  for (int i = 0; i < Count(); ++i) {
    if (marks[static_cast<std::size_t>(i)].selected) indices.push_back(i);
  }
  return indices;
}

std::vector<std::string> ImageList::TaggedPaths() const { return PathsWith(*this, &ItemMarks::tagged); }

std::vector<std::string> ImageList::SelectedPaths() const { return PathsWith(*this, &ItemMarks::selected); }

std::vector<int> ImageList::Reorder(const std::vector<std::string>& paths) {
  auto order = MatchedOrder({files.begin(), files.end()}, paths);
  Arrange(*this, order);
  return order;
}

std::vector<int> ImageList::MoveSelectedTo(int position) {
  std::vector<int> before, moved, after;
  for (int i = 0; i < Count(); ++i) {
    auto& part = marks[static_cast<std::size_t>(i)].selected ? moved : i < position ? before : after;
    part.push_back(i);
  }
  before.insert(before.end(), moved.begin(), moved.end());
  before.insert(before.end(), after.begin(), after.end());
  Arrange(*this, before);
  return before;
}

void ImageList::Remove(const std::vector<int>& indices) {
  std::vector<bool> removed(files.size(), false);
  for (const int index : indices) {
    if (ValidIndex(index)) removed[static_cast<std::size_t>(index)] = true;
  }
  std::vector<int> stay, gone;
  for (int i = 0; i < Count(); ++i) (removed[static_cast<std::size_t>(i)] ? gone : stay).push_back(i);
  files = Permuted(files, stay);
  marks = Permuted(marks, stay);
  currentIndex = IndexAfterRemoval(currentIndex, gone, Count());
  focusIndex = IndexAfterRemoval(focusIndex, gone, Count());
}

void ImageList::Rename(const std::string& from, const std::string& to) {
  std::ranges::replace(files, from, to);
  std::ranges::replace(customOrder, from, to);
  if (currentPath == from) currentPath = to;
}

void ImageList::Rename(const std::unordered_map<std::string, std::string>& names) {
  const auto follow = [&](std::string& path) {
    if (const auto found = names.find(path); found != names.end()) path = found->second;
  };
  std::ranges::for_each(files, follow);
  std::ranges::for_each(customOrder, follow);
  follow(currentPath);
}

void ImageList::Assign(std::vector<std::string> paths) {
  files = std::move(paths);
  marks.assign(files.size(), {});
  currentIndex = -1;
  focusIndex = -1;
  currentPath.clear();
}

std::string SelectionText(const ImageList& list) {
  const int selected = list.SelectedCount();
  if (selected == 0) return {};
  return std::to_string(selected) + " of " + std::to_string(list.Count()) + " selected";
}

}  // namespace ml::catalogue
