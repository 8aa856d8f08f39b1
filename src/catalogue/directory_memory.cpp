#include "catalogue/directory_memory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <iterator>

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

std::unordered_set<std::string> AsSet(std::vector<std::string> paths) {
  return {std::make_move_iterator(paths.begin()), std::make_move_iterator(paths.end())};
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
  savedTags_.clear();
}

std::string DirectoryMemory::OrderPath() const { return directory_ + std::string(kOrderFileName); }

std::string DirectoryMemory::TagPath() const { return directory_ + std::string(kTagFileName); }

void DirectoryMemory::ApplyTags(ImageList& list) {
  const auto file = ReadListFile(TagPath());
  tagsUnreadable_ = file.state == ReadState::Unreadable;
  TagNames(list, directory_, ParseTagFile(file.text));
  savedTags_ = AsSet(list.TaggedPaths());
}

bool DirectoryMemory::SaveTags(const ImageList& list) {
  if (list.Empty() || directory_.empty()) return true;
  if (tagsUnreadable_) return false;
  const auto path = TagPath();
  const auto file = ReadListFile(path);
  if (file.state == ReadState::Unreadable) return false;
  const auto inFile = ParseTagFile(file.text);
  // A file that is gone says nothing of what others did.
  const bool alone = file.state == ReadState::Missing;
  auto names = NamesHere(alone ? list.TaggedPaths() : TaggedHereOrByOthers(list, inFile));
  if (coverage_ == Coverage::SomeFiles) names = MergeKeptNames(inFile, names, StaysOut(list));
  const auto text = BuildTagFile(names);
  const bool saved =
      text.empty() ? ::unlink(path.c_str()) == 0 || errno == ENOENT : WriteIfChanged(path, text) != WriteState::Failed;
  if (saved) savedTags_ = AsSet(list.TaggedPaths());
  return saved;
}

std::vector<std::string> DirectoryMemory::TaggedHereOrByOthers(const ImageList& list,
                                                               const std::vector<std::string>& inFile) const {
  ImageList asInFile;
  asInFile.Assign(list.files);
  TagNames(asInFile, directory_, inFile);
  for (int index = 0; index < list.Count(); ++index) {
    const auto place = static_cast<std::size_t>(index);
    const bool tagged = list.marks[place].tagged;
    if (tagged != savedTags_.contains(list.files[place])) asInFile.SetTag(index, tagged);
  }
  return asInFile.TaggedPaths();
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
