#include "catalogue/list_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <span>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/paths.h"
#include "platform/readable_file.h"
#include "platform/temporary_name.h"

namespace ml::catalogue {

namespace {

constexpr std::uint64_t kLargestListFile = 64U << 20U;

}  // namespace

ListFileText ReadListFile(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 && errno == ENOENT) return {};
  try {
    const auto bytes = platform::ReadFile(path, kLargestListFile);
    std::string text(bytes.size(), '\0');
    std::ranges::transform(bytes, text.begin(), [](std::byte b) { return static_cast<char>(b); });
    return {ReadState::Read, std::move(text)};
  } catch (const platform::UserError&) {
    return {ReadState::Unreadable, {}};
  }
}

WriteState WriteIfChanged(const std::string& path, std::string_view text) {
  const auto old = ReadListFile(path);
  if (old.state == ReadState::Read && old.text == text) return WriteState::Unchanged;
  if (old.state != ReadState::Missing && !platform::MakeWritable(path)) return WriteState::Failed;
  try {
    platform::ReplaceFile(path, std::as_bytes(std::span(text)));
    platform::RemoveStaleTemporaries(std::string(platform::DirectoryOf(path)));  // we write here anyway
    return WriteState::Written;
  } catch (const platform::UserError&) {
    return WriteState::Failed;
  }
}

}  // namespace ml::catalogue
