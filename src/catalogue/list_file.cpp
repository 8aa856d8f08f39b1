#include "catalogue/list_file.h"

#include <sys/stat.h>

#include <cerrno>
#include <fstream>
#include <span>

#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::catalogue {

namespace {

constexpr std::uint64_t kLargestListFile = 64U << 20U;

void MakeWritable(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || (status.st_mode & S_IWUSR) != 0) return;
  ::chmod(path.c_str(), (status.st_mode & 07777U) | S_IWUSR);  // if it fails, so does the write
}

void Replace(const std::string& path, std::string_view text) {
  std::ofstream out(path, std::ios::binary);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (!out.flush()) throw platform::UserError("Unable to write to file:\n" + path);
}

}  // namespace

ListFileText ReadListFile(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 && errno == ENOENT) return {};
  try {
    const platform::ReadableFile file(path);
    if (file.Size() > kLargestListFile) return {ReadState::Unreadable, {}};
    std::string text(file.Size(), '\0');
    const auto read = file.ReadAt(0, std::as_writable_bytes(std::span(text)));
    text.resize(read);
    return {ReadState::Read, std::move(text)};
  } catch (const platform::UserError&) {
    return {ReadState::Unreadable, {}};
  }
}

WriteState WriteIfChanged(const std::string& path, std::string_view text) {
  const auto old = ReadListFile(path);
  if (old.state == ReadState::Read && old.text == text) return WriteState::Unchanged;
  try {
    MakeWritable(path);
    Replace(path, text);
    return WriteState::Written;
  } catch (const platform::UserError&) {
    return WriteState::Failed;
  }
}

}  // namespace ml::catalogue
