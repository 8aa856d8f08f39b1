#include "catalogue/scan.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "catalogue/viewing_jpegs.h"
#include "imagefiles/format_table.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/text.h"

namespace ml::catalogue {

namespace {

/// In characters. A raw file's name with its extension may have 31.
constexpr std::size_t kLongestRawStem = 27;

bool IsHidden(std::string_view name) { return name.starts_with('.'); }

/// Whether a file of this name is shown, counting it in `leftOut` if not.
bool TakesName(std::string_view name, const ScanOptions& options, LeftOut& leftOut) {
  const bool isImage = imagefiles::FindFormat(name) != nullptr;
  if (IsHidden(name) && !options.showHidden) {
    if (isImage) ++leftOut.hiddenImages;
    return false;
  }
  if (!isImage) ++leftOut.otherFiles;
  return isImage;
}

}  // namespace

std::vector<std::string> ScanDirectory(const std::string& directory, const ScanOptions& options, LeftOut& leftOut) {
  using platform::EntryKind;
  auto listing = platform::ReadDirectory(directory);
  leftOut.unreadable = !listing.complete;
  auto& entries = listing.entries;
  std::erase_if(entries, [&](const auto& entry) {
    if (entry.kind == EntryKind::Directory || entry.kind == EntryKind::Other) return true;
    if (!TakesName(entry.name, options, leftOut)) return true;
    return entry.kind == EntryKind::Link && !platform::IsRegularFile(platform::JoinPath(directory, entry.name));
  });
  std::ranges::sort(entries, [](const auto& a, const auto& b) { return platform::CompareNoCase(a.name, b.name) < 0; });
  std::vector<std::string> paths;
  paths.reserve(entries.size());
  for (const auto& entry : entries) paths.push_back(platform::JoinPath(directory, entry.name));
  return paths;
}

std::vector<std::string> ExistingImages(const std::vector<std::string>& paths, const ScanOptions& options,
                                        LeftOut& leftOut) {
  std::vector<std::string> images;
  std::unordered_set<std::string> seen;
  for (const auto& path : paths) {
    auto absolute = platform::AbsolutePath(path);
    if (!platform::IsRegularFile(absolute) || !TakesName(platform::FileName(absolute), options, leftOut)) continue;
    if (seen.insert(absolute).second) images.push_back(std::move(absolute));
  }
  return images;
}

FilteredImages FilterImages(std::vector<std::string> images, const ScanOptions& options, LeftOut& leftOut) {
  FilteredImages result;
  result.kept.reserve(images.size());
  ViewingJpegs viewing;
  const auto nameIsTooLong = [&viewing](const std::string& path) {
    const auto parts = platform::SplitPath(path);
    if (parts.stem.size() <= kLongestRawStem || platform::CodePointCount(parts.stem) <= kLongestRawStem) return false;
    if (platform::EqualsAsciiFolded(parts.extension, ".crw")) return true;
    return platform::EqualsAsciiFolded(parts.extension, ".tif") && viewing.IsRaw(path);
  };
  for (auto& path : images) {
    if (nameIsTooLong(path)) {
      result.longNames.push_back(std::move(path));
    } else if (options.bindJpegToEos1DRaw && !viewing.RawOf(path).empty()) {
      ++leftOut.boundJpegs;
    } else {
      result.kept.push_back(std::move(path));
    }
  }
  leftOut.longNames = static_cast<int>(result.longNames.size());
  return result;
}

}  // namespace ml::catalogue
