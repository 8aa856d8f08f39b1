#include "platform/journal_files.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <functional>

#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/record_line.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

constexpr std::string_view kLogEnding = ".edits";
constexpr std::string_view kStoreEnding = ".old";
constexpr std::size_t kMaxBatches = 100;
constexpr std::uint64_t kMaxJournalBytes = std::uint64_t{512} << 20;
constexpr std::size_t kDigits = 10;

std::vector<std::string> IdsWith(FileSystem& fileSystem, const std::string& directory, std::string_view ending) {
  std::vector<std::string> names, ids;
  if (fileSystem.List(directory, names) != 0 && errno != ENOENT) {
    ThrowFileError(messages::kUnableToRead, directory, errno);
  }
  for (const auto& name : names) {
    const auto id = name.substr(0, kDigits);
    const bool isNumber = id.size() == kDigits && id.find_first_not_of("0123456789") == std::string::npos;
    if (isNumber && name.substr(kDigits) == ending) ids.push_back(id);
  }
  std::ranges::sort(ids, std::greater());
  return ids;
}

std::string NextId(const std::string& latest) {
  std::uint64_t number = 0;
  ReadNumber(latest, number);  // stays 0 where there is none yet
  auto digits = std::to_string(number + 1);
  return digits.insert(0, kDigits - std::min(kDigits, digits.size()), '0');
}

std::uint64_t SizeOf(FileSystem& fileSystem, const std::string& path) {
  struct stat status {};
  return fileSystem.Stat(path, Links::Keep, status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

}  // namespace

std::string JournalDirectory(const std::string& stateDirectory) { return JoinPath(stateDirectory, "journal"); }

std::vector<std::string> ListBatches(FileSystem& fileSystem, const std::string& directory) {
  return IdsWith(fileSystem, directory, kLogEnding);
}

std::string LogPath(const std::string& directory, const std::string& id) {
  return JoinPath(directory, id).append(kLogEnding);
}
std::string StorePathOf(const std::string& logPath) { return WithExtension(logPath, kStoreEnding); }

OpenFile CreateLog(FileSystem& fileSystem, const std::string& directory) {
  MakeDirectories(fileSystem, directory);
  const auto ids = ListBatches(fileSystem, directory);
  auto id = NextId(ids.empty() ? std::string() : ids.front());
  for (;; id = NextId(id)) {  // another process may take the same number
    const auto path = LogPath(directory, id);
    const int fd = fileSystem.Open(path, O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (fd < 0 && errno == EEXIST) continue;
    if (fd < 0) ThrowFileError(messages::kUnableToWrite, path, errno);
    OpenFile log(fileSystem, fd, path);
    log.TryLock();
    return log;
  }
}

std::optional<EditLog> LoadBatch(const OpenFile& log) {
  std::vector<std::byte> bytes(static_cast<std::size_t>(log.Size()));
  bytes.resize(log.Read(0, bytes));
  return ReadEditLog(AsText(bytes));
}

void RemoveBatch(FileSystem& fileSystem, const std::string& directory, const std::string& id) {
  OpenDirectory names(fileSystem, LogPath(directory, id));
  RemoveFile(fileSystem, LogPath(directory, id));
  RemoveFile(fileSystem, StorePathOf(LogPath(directory, id)));
  names.Sync();
}

void PruneJournal(FileSystem& fileSystem, const std::string& directory) {
  const auto ids = ListBatches(fileSystem, directory);
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    bytes +=
        SizeOf(fileSystem, LogPath(directory, ids[i])) + SizeOf(fileSystem, StorePathOf(LogPath(directory, ids[i])));
    if (i == 0 || (i < kMaxBatches && bytes <= kMaxJournalBytes)) continue;
    auto log = OpenRegular(fileSystem, LogPath(directory, ids[i]), O_RDWR);
    if (log.TryLock()) RemoveBatch(fileSystem, directory, ids[i]);
  }
  for (const auto& id : IdsWith(fileSystem, directory, kStoreEnding)) {
    const auto log = LogPath(directory, id);
    struct stat status {};
    const bool isOrphan = fileSystem.Stat(log, Links::Keep, status) != 0 && errno == ENOENT;
    if (isOrphan) RemoveFile(fileSystem, StorePathOf(log));
  }
}

}  // namespace ml::platform
