#include "catalogue/directory_memory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <unordered_set>

#include "catalogue/kept_names.h"
#include "catalogue/list_file.h"
#include "catalogue/order_file.h"
#include "catalogue/tag_file.h"
#include "platform/paths.h"

namespace ml::catalogue {

namespace {

std::vector<std::string> FileNames(const std::vector<std::string>& paths) {
  std::vector<std::string> names;
  names.reserve(paths.size());
  for (const auto& path : paths) names.emplace_back(platform::FileName(path));
  return names;
}

const std::vector<std::string>& PathsInOrder(const ImageList& list, SortMethod method) {
  return method == SortMethod::Custom ? list.files : list.customOrder;
}

bool WriteOrder(const std::string& path, const ImageList& list, SortMethod method, std::vector<std::string> names) {
  const auto text = BuildOrderText(platform::DirectoryOf(path), {method, list.reverseSort, std::move(names)});
  return WriteIfChanged(path, text) != WriteState::Failed;
}

}  // namespace

void DirectoryMemory::Enter(const std::string& directory, Coverage coverage, std::vector<std::string>& paths,
                            ImageList& list) {
  directory_ = directory;
  coverage_ = coverage;
  orderUnreadable_ = LoadOrderFile(OrderPath(), paths, list) == ReadState::Unreadable;
  tagsUnreadable_ = false;
}

std::string DirectoryMemory::OrderPath() const { return directory_ + std::string(kOrderFileName); }

void DirectoryMemory::ApplyTags(ImageList& list) {
  const auto file = ReadListFile(directory_ + std::string(kTagFileName));
  tagsUnreadable_ = file.state == ReadState::Unreadable;
  TagNames(list, directory_, ParseTagFile(file.text));
}

bool DirectoryMemory::SaveTags(const ImageList& list) const {
  if (list.Empty() || directory_.empty()) return true;
  if (tagsUnreadable_) return false;
  const auto path = directory_ + std::string(kTagFileName);
  auto names = NamesHere(list.TaggedPaths());
  if (coverage_ == Coverage::SomeFiles) {
    const auto old = ReadListFile(path);
    if (old.state == ReadState::Unreadable) return false;
    names = MergeKeptNames(ParseTagFile(old.text), names, StaysOut(list));
  }
  const auto text = BuildTagFile(names);
  if (!text.empty()) return WriteIfChanged(path, text) != WriteState::Failed;
  return ::unlink(path.c_str()) == 0 || errno == ENOENT;
}

bool DirectoryMemory::SaveOrder(const ImageList& list) const {
  if (list.Empty() || directory_.empty()) return true;
  if (orderUnreadable_) return false;
  if (coverage_ == Coverage::WholeDirectory) return SaveOrderFile(OrderPath(), list, list.sortMethod);
  const auto file = ReadListFile(OrderPath());
  if (file.state == ReadState::Unreadable) return false;
  DirectoryOrder old;
  ParseOrderText(file.text, old);
  auto names = NamesHere(PathsInOrder(list, list.sortMethod));
  return WriteOrder(OrderPath(), list, list.sortMethod, MergeKeptNames(old.names, names, StaysOut(list)));
}

std::vector<std::string> DirectoryMemory::NamesHere(const std::vector<std::string>& paths) const {
  std::vector<std::string> names;
  names.reserve(paths.size());
  for (const auto& path : paths) {
    if (platform::DirectoryOf(path) == directory_) names.emplace_back(platform::FileName(path));
  }
  return names;
}

std::function<bool(const std::string& name)> DirectoryMemory::StaysOut(const ImageList& list) const {
  return [directory = directory_,
          shown = std::unordered_set<std::string>(list.files.begin(), list.files.end())](const std::string& name) {
    const auto path = directory + name;
    struct stat status {};
    return !shown.contains(path) && ::lstat(path.c_str(), &status) == 0;
  };
}

bool SaveOrderFile(const std::string& path, const ImageList& list, SortMethod method) {
  return list.Empty() || WriteOrder(path, list, method, FileNames(PathsInOrder(list, method)));
}

}  // namespace ml::catalogue
