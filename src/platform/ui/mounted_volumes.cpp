#include "platform/ui/mounted_volumes.h"

#include <QStorageInfo>
#include <algorithm>
#include <array>
#include <string_view>

#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::platform::ui {
namespace {

/// Parts of the running system that have file systems of their own.
constexpr std::array<std::string_view, 11> kSystemPlaces = {"/boot", "/dev", "/efi", "/etc", "/proc", "/snap",
                                                            "/sys",  "/tmp", "/usr", "/var", "/nix"};
constexpr std::array<std::string_view, 6> kShares = {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "fuse.rclone"};

bool LiesIn(std::string_view path, std::string_view place) {
  return path == place || (path.starts_with(place) && path[place.size()] == '/');
}

bool HoldsUserFiles(const QStorageInfo& info, const std::string& path) {
  if (!info.isValid() || !info.isReady() || path == "/") return false;
  if (std::ranges::any_of(kSystemPlaces, [&](auto place) { return LiesIn(path, place); })) return false;
  if (LiesIn(path, "/run") && !LiesIn(path, "/run/media")) return false;
  return info.device().startsWith("/dev/") ||
         std::ranges::find(kShares, info.fileSystemType().toStdString()) != kShares.end();
}

}  // namespace

std::vector<Volume> MountedVolumes() {
  std::vector<Volume> volumes;
  for (const auto& info : QStorageInfo::mountedVolumes()) {
    const auto path = PathFromQt(info.rootPath());
    if (!HoldsUserFiles(info, path)) continue;
    const auto label = info.name().toStdString();
    volumes.push_back({path, label.empty() ? std::string(FileName(path)) : label});
  }
  std::ranges::sort(volumes, {}, &Volume::path);
  return volumes;
}

}  // namespace ml::platform::ui
