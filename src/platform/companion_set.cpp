#include "platform/companion_set.h"

#include <sys/stat.h>

#include <initializer_list>
#include <optional>

#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::platform {

namespace {

std::vector<std::string> NonEmpty(std::initializer_list<std::string> paths) {
  std::vector<std::string> result;
  for (const auto& path : paths) {
    if (!path.empty()) result.push_back(path);
  }
  return result;
}

}  // namespace

std::vector<std::string> CompanionSet::Paths() const { return NonEmpty({file, thm, txt, wav, jpg}); }

std::vector<std::string> CompanionSet::PathsToDelete() const { return NonEmpty({file, thm, jpg, txt, wav}); }

std::string FindCompanion(const std::string& path, std::string_view extension, DirIndex& index) {
  // Cameras write one of two spellings, which need no look through the directory.
  for (const auto& spelling : {std::string(extension), AsciiUpper(extension)}) {
    auto candidate = WithExtension(path, spelling);
    if (candidate == path) return {};  // a file is never its own companion
    if (IsRegularFile(candidate)) return candidate;
  }
  const auto parts = SplitPath(path);
  const auto found = index.Find(std::string(parts.stem).append(extension));
  if (!found) return {};
  auto companion = std::string(parts.directory) + *found;
  return companion != path && IsRegularFile(companion) ? companion : std::string();
}

std::string FindCompanion(const std::string& path, std::string_view extension) {
  thread_local std::optional<DirIndex> last;
  const auto directory = DirectoryOf(path);
  const std::string place(directory.empty() ? "." : directory);
  if (!last || last->Directory() != place) last.emplace(place);
  return FindCompanion(path, extension, *last);
}

CompanionSet FindCompanions(const std::string& path, CompanionFacts facts, DirIndex& index) {
  CompanionSet set;
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0) set.file = path;  // also a link that leads nowhere: it can be deleted
  if (facts.hasThm) set.thm = FindCompanion(path, ".thm", index);
  set.txt = FindCompanion(path, ".txt", index);
  set.wav = FindCompanion(path, ".wav", index);
  if (facts.hasBoundJpeg) set.jpg = FindCompanion(path, ".jpg", index);
  return set;
}

}  // namespace ml::platform
