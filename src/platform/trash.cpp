#include "platform/trash.h"

#include <gio/gio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

constexpr std::uint64_t kMaxInfo = std::uint64_t{64} << 10;

struct ObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct ErrorDeleter {
  void operator()(GError* error) const { g_error_free(error); }
};

/// One trash directory; the paths in its notes are relative to `top`, where that is not empty.
struct TrashFolder {
  std::string folder, top;
};

/// The topmost directory on the volume of `path`.
std::string VolumeTop(FileSystem& fileSystem, const std::string& path) {
  std::string top = normaliseDirectory(DirectoryOf(path));
  struct stat status {};
  if (fileSystem.Stat(top, Links::Follow, status) != 0) return "/";
  const auto device = status.st_dev;
  while (top != "/") {
    const auto above = normaliseDirectory(JoinPath(top, ".."));
    if (fileSystem.Stat(above, Links::Follow, status) != 0 || status.st_dev != device) break;
    top = above;
  }
  return top;
}

std::string Unescape(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string byte;
    if (text[i] == '%' && i + 2 < text.size() && FromHex(text.substr(i + 1, 2), byte)) {
      result += byte;
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

/// What a note of the trash says: the path as it stands there, and the date, whose form sorts as text.
struct TrashNote {
  std::string path, date;
};

std::optional<TrashNote> ReadNote(const std::string& path, FileSystem& fileSystem) {
  const auto file = OpenIfReadable(path, fileSystem);
  if (!file || file->Size() > kMaxInfo) return std::nullopt;
  const auto bytes = file->Range(0, kMaxInfo);
  TrashNote note;
  for (const auto line : SplitLines(AsText(bytes))) {
    if (line.starts_with("Path=")) note.path = Unescape(line.substr(5));
    if (line.starts_with("DeletionDate=")) note.date = line.substr(13);
  }
  return note;
}

class SystemTrash final : public Trash {
 public:
  explicit SystemTrash(FileSystem& fileSystem) : fileSystem_(fileSystem) {}

  void Put(const std::string& path) override {
    const std::unique_ptr<GFile, ObjectDeleter> file(g_file_new_for_path(path.c_str()));
    GError* raw = nullptr;
    if (g_file_trash(file.get(), nullptr, &raw) != FALSE) return;
    const std::unique_ptr<GError, ErrorDeleter> error(raw);
    throw UserError(messages::kUnableToTrash + path + "\n" + error->message);
  }

  std::vector<TrashedFile> Find(const std::string& path) override {
    std::vector<std::pair<std::string, TrashedFile>> found;
    for (const auto& folder : Folders(path)) Collect(folder, path, found);
    std::ranges::stable_sort(found, [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<TrashedFile> files;
    files.reserve(found.size());
    for (auto& [date, file] : found) files.push_back(std::move(file));
    return files;
  }

 private:
  std::vector<TrashFolder> Folders(const std::string& path) const {
    const auto top = VolumeTop(fileSystem_, path);
    const auto user = std::to_string(::getuid());
    return {{.folder = JoinPath(g_get_user_data_dir(), "Trash"), .top = {}},
            {.folder = JoinPath(top, ".Trash/" + user), .top = top},
            {.folder = JoinPath(top, ".Trash-" + user), .top = top}};
  }

  void Collect(const TrashFolder& folder, const std::string& path,
               std::vector<std::pair<std::string, TrashedFile>>& found) const {
    constexpr std::string_view kEnding = ".trashinfo";
    const auto infoFolder = JoinPath(folder.folder, "info");
    // A name taken already gets its number behind the part before the first dot.
    const auto name = FileName(path);
    const auto front = name.substr(0, name.find('.'));
    std::vector<std::string> names;
    if (fileSystem_.List(infoFolder, names) != 0) return;
    for (const auto& infoName : names) {
      if (!infoName.starts_with(front) || !infoName.ends_with(kEnding)) continue;
      const auto info = JoinPath(infoFolder, infoName);
      const auto note = ReadNote(info, fileSystem_);
      if (!note || (note->path.starts_with('/') ? note->path : JoinPath(folder.top, note->path)) != path) continue;
      const auto trashed = infoName.substr(0, infoName.size() - kEnding.size());
      found.emplace_back(
          note->date,
          TrashedFile{.original = path, .file = JoinPath(JoinPath(folder.folder, "files"), trashed), .info = info});
    }
  }

  FileSystem& fileSystem_;
};

}  // namespace

std::unique_ptr<Trash> MakeSystemTrash(FileSystem& fileSystem) { return std::make_unique<SystemTrash>(fileSystem); }

}  // namespace ml::platform
