#include "catalogue/new_name.h"

#include "catalogue/messages.h"
#include "catalogue/rename_steps.h"
#include "imagefiles/eos1d_test.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::catalogue {
namespace {

/// In characters: a rule of the cameras' own programs.
constexpr std::size_t kLongestRawName = 31;

bool IsTaken(const std::string& path) { return !IsNameFree(path, platform::RealFileSystem()); }

}  // namespace

std::optional<std::string> RefuseNewName(const std::string& path, const std::string& name,
                                         imagefiles::CompanionFinder& companions) {
  if (!platform::IsPortableName(name)) return kNameNotTaken;
  const auto oldName = platform::FileName(path);
  if (platform::SplitPath(name).extension != platform::SplitPath(oldName).extension) return kExtensionChanged;
  const bool isCanonRaw = platform::EndsWithNoCase(path, ".crw") || imagefiles::IsEos1DRawFile(path);
  if (isCanonRaw && platform::CodePointCount(name) > kLongestRawName) return RawNameTooLong(name);
  const auto target = std::string(platform::DirectoryOf(path)) + name;
  const bool sameButForCase = platform::EqualsFolded(name, oldName);
  if (sameButForCase && (!IsTaken(target) || platform::SameFile(path, target))) return std::nullopt;
  if (IsTaken(target)) return kImageNameTaken;
  const auto files = companions.Find(path);
  const auto beside = [&](const std::string& companion) {
    return platform::WithExtension(target, platform::SplitPath(companion).extension);
  };
  if (!files.thm.empty() && IsTaken(beside(files.thm))) return kThmNameTaken;
  if (!files.jpg.empty() && IsTaken(beside(files.jpg))) return kJpegNameTaken;
  return std::nullopt;
}

}  // namespace ml::catalogue
