#include "imagefiles/profile_finder.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <utility>

#include "imaging/colour/colour_profile.h"
#include "platform/atomic_file.h"
#include "platform/data_folders.h"
#include "platform/dir_index.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::imagefiles {
namespace {

using platform::JoinPath;

/// A name counts in every folder before the next one does.
constexpr std::string_view kSrgbNames[] = {"sRGB Color Space Profile.icm", "sRGB.icc"};
constexpr std::string_view kAdobeRgbNames[] = {"AdobeRGB1998.icc", "Adobe RGB (1998).icm",
                                               "compatibleWithAdobeRGB1998.icc"};
constexpr std::string_view kBuiltInName = "sRGB.icc";

std::string FindIn(const std::string& folder, std::string_view name) {
  const auto found = platform::DirIndex(folder).Find(name);
  if (!found) return {};
  auto path = JoinPath(folder, *found);
  return platform::IsRegularFile(path) ? path : std::string();
}

std::vector<std::string> FoldersBelow(const std::string& folder) {
  std::vector<std::string> below;
  std::error_code error;  // a folder that cannot be read holds nothing for us
  for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code unknown;
    if (at->is_directory(unknown)) below.push_back(at->path().string());
  }
  std::ranges::sort(below);
  return below;
}

std::string FindFirst(const ProfileFinder& finder, std::span<const std::string_view> names) {
  for (const auto name : names) {
    if (auto path = finder.FindProfile(name); !path.empty()) return path;
  }
  return {};
}

/// Empty if it cannot be written.
std::string WriteBuiltIn(const std::string& folder) {
  const auto bytes = imaging::ColourProfile::Srgb().Bytes();
  if (bytes.empty()) return {};
  auto path = JoinPath(folder, kBuiltInName);
  try {
    platform::ensureDirectory(folder);
    platform::ReplaceFile(path, bytes);
    return path;
  } catch (const platform::UserError&) {
    return {};  // as if no profile had been found
  }
}

}  // namespace

ProfileFinder::ProfileFinder(std::vector<ProfileFolder> folders, std::string ownFolder)
    : folders_(std::move(folders)), ownFolder_(std::move(ownFolder)) {}

ProfileFinder ProfileFinder::OfSystem() {
  const auto own = JoinPath(platform::userDataDir(), "profiles");
  const auto home = platform::homeDir();
  return {{{.path = JoinPath(platform::programDataDir(), "profiles")},
           {.path = own},
           {.path = JoinPath(home, ".local/share/icc")},
           {.path = JoinPath(home, ".color/icc")},
           {.path = "/usr/local/share/color/icc", .andBelow = true},
           {.path = kSystemProfiles, .andBelow = true}},
          own};
}

std::string ProfileFinder::FindProfile(std::string_view name) const {
  for (const auto& folder : folders_) {
    if (auto path = FindIn(folder.path, name); !path.empty()) return path;
    if (!folder.andBelow) continue;
    for (const auto& below : FoldersBelow(folder.path)) {
      if (auto path = FindIn(below, name); !path.empty()) return path;
    }
  }
  return {};
}

std::string ProfileFinder::FindSrgbProfile() const {
  auto path = FindFirst(*this, kSrgbNames);
  return path.empty() ? WriteBuiltIn(ownFolder_) : path;
}

std::string ProfileFinder::FindAdobeRgbProfile() const { return FindFirst(*this, kAdobeRgbNames); }

}  // namespace ml::imagefiles
