#include "catalogue/renamed_names.h"

#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <unordered_set>

#include "catalogue/list_file.h"
#include "catalogue/order_file.h"
#include "catalogue/tag_file.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::catalogue {
namespace {

using Names = std::vector<std::string>;

/// The renames in one directory, by bare names.
class DirectoryRenames {
 public:
  void Add(const std::string& from, const std::string& to) {
    exact_.emplace(from, to);
    folded_.emplace(platform::nameFold(from), to);
    taken_.insert(to);
  }

  Names Followed(const std::string& directory, const Names& names) const {
    Names followed;
    for (const auto& name : names) {
      if (const auto now = NameNow(directory, name)) followed.push_back(*now);
    }
    return followed;
  }

 private:
  /// Nothing for the name of a file that was gone before another one got that name.
  std::optional<std::string> NameNow(const std::string& directory, const std::string& name) const {
    if (const auto found = exact_.find(name); found != exact_.end()) return found->second;
    if (taken_.contains(name)) return std::nullopt;
    const auto found = folded_.find(platform::nameFold(name));
    return found == folded_.end() || platform::Exists(directory + name) ? name : found->second;
  }

  std::unordered_map<std::string, std::string> exact_, folded_;
  std::unordered_set<std::string> taken_;
};

bool FollowInTags(const std::string& directory, const DirectoryRenames& renames) {
  const auto path = directory + std::string(kTagFileName);
  const auto file = ReadListFile(path);
  if (file.state != ReadState::Read) return file.state == ReadState::Missing;
  const auto names = ParseTagFile(file.text);
  const auto followed = renames.Followed(directory, names);
  if (followed == names) return true;
  if (!followed.empty()) return WriteIfChanged(path, BuildTagFile(followed)) != WriteState::Failed;
  std::error_code error;
  return std::filesystem::remove(path, error);
}

bool FollowInOrder(const std::string& directory, const DirectoryRenames& renames) {
  const auto path = directory + std::string(kOrderFileName);
  const auto file = ReadListFile(path);
  if (file.state != ReadState::Read) return file.state == ReadState::Missing;
  DirectoryOrder order;
  ParseOrderText(file.text, order);
  auto followed = renames.Followed(directory, order.names);
  if (followed == order.names) return true;
  order.names = std::move(followed);
  return WriteIfChanged(path, BuildOrderText(directory, order)) != WriteState::Failed;
}

}  // namespace

RenamedPaths PathsTakenBack(const std::vector<platform::JournalRename>& renames) {
  RenamedPaths begins;  // by the first name: the last one
  for (auto rename = renames.rbegin(); rename != renames.rend(); ++rename) {
    auto known = begins.extract(rename->to);
    begins[rename->from] = known ? known.mapped() : rename->to;
  }
  RenamedPaths back;
  for (const auto& [before, after] : begins) back.emplace(after, before);
  return back;
}

std::vector<std::string> FollowInDirectories(const RenamedPaths& renamed) {
  std::map<std::string, DirectoryRenames> directories;
  for (const auto& [from, to] : renamed) {
    const std::string directory(platform::DirectoryOf(from));
    if (from == to || platform::DirectoryOf(to) != directory) continue;
    directories[directory].Add(std::string(platform::FileName(from)), std::string(platform::FileName(to)));
  }
  std::vector<std::string> failed;
  for (const auto& [directory, renames] : directories) {
    if (!FollowInTags(directory, renames)) failed.push_back(directory + std::string(kTagFileName));
    if (!FollowInOrder(directory, renames)) failed.push_back(directory + std::string(kOrderFileName));
  }
  return failed;
}

}  // namespace ml::catalogue
