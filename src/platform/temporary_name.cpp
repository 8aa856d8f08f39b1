#include "platform/temporary_name.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "platform/errors.h"
#include "platform/open_file.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

constexpr std::string_view kPrefix = ".marrowlantern-";
constexpr std::string_view kTemporary = ".tmp";
constexpr std::string_view kCopy = ".copy";
constexpr std::size_t kDigits = 32;

bool HasForm(std::string_view name, std::string_view ending) {
  if (name.size() != kPrefix.size() + kDigits + ending.size()) return false;
  if (!name.starts_with(kPrefix) || !name.ends_with(ending)) return false;
  const auto digits = name.substr(kPrefix.size(), kDigits);
  return digits.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

std::string WithEnding(std::string_view name, std::string_view ending) {
  return std::string(name.substr(0, name.rfind('.'))).append(ending);
}

bool RemoveIfStale(const std::string& path, FileSystem& fileSystem) {
  struct stat status {};
  if (fileSystem.Stat(path, Links::Keep, status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (status.st_uid != ::geteuid()) return false;
  try {
    auto file = OpenRegular(fileSystem, path, O_RDONLY);
    return file.TryLock() && fileSystem.Unlink(path) == 0;
  } catch (const UserError&) {
    return false;  // not readable, or gone meanwhile: left to somebody else
  }
}

}  // namespace

std::string NewTemporaryName() {
  std::random_device device;
  std::array<unsigned, 4> random{};
  std::ranges::generate(random, [&] { return device(); });
  return std::string(kPrefix).append(ToHex(AsText(std::as_bytes(std::span(random))))).append(kTemporary);
}

std::string CopyNameOf(std::string_view temporaryName) { return WithEnding(temporaryName, kCopy); }
std::string TemporaryNameOf(std::string_view copyName) { return WithEnding(copyName, kTemporary); }

int RemoveStaleTemporaries(const std::string& directory, FileSystem& fileSystem) {
  std::vector<std::string> names;
  if (fileSystem.List(directory, names) != 0) return 0;
  return static_cast<int>(std::ranges::count_if(names, [&](const std::string& name) {
    return HasForm(name, kTemporary) && RemoveIfStale(JoinPath(directory, name), fileSystem);
  }));
}

}  // namespace ml::platform
