#include "catalogue/sort.h"

#include <algorithm>

#include "imagefiles/format_table.h"
#include "platform/dir_index.h"
#include "platform/name_pieces.h"
#include "platform/numbers.h"
#include "platform/paths.h"

namespace ml::catalogue {

namespace {

constexpr std::int64_t kNoKey = -1;

struct SortRecord {
  std::int64_t key = 0;
  std::string folded;  ///< paths compare by it, and by their bytes where it is equal
  std::string path;
};

/// The first run of digits of the stem; numbers above 31 bits are all the same.
std::int64_t NumberInName(std::string_view path) {
  const auto digits = platform::FirstDigits(platform::SplitPath(path).stem);
  return digits.empty() ? kNoKey : platform::LeadingInteger(digits);
}

/// The file that holds the time of an image: its ".thm" companion, where it may have one and has.
std::string TimeFile(const std::string& path, platform::DirIndexes& indexes) {
  const auto* format = imagefiles::FindFormat(path);
  if (format == nullptr || !format->hasThm) return path;
  const auto parts = platform::SplitPath(path);
  const auto found = indexes.Of(std::string(parts.directory)).FindListed(std::string(parts.stem) + ".thm");
  return found ? std::string(parts.directory) + *found : path;
}

std::vector<SortRecord> MakeRecords(std::vector<std::string>& list, SortMethod method, const TimeOfPath& timeOf) {
  platform::DirIndexes indexes;
  const auto keyOf = [&](const std::string& path) -> std::int64_t {
    switch (method) {
      case SortMethod::Numeric:
        return NumberInName(path);
      case SortMethod::Timestamp:
        return timeOf(TimeFile(path, indexes));
      case SortMethod::FileType:
        return imagefiles::FileTypeRank(path);
      default:
        return 0;
    }
  };
  std::vector<SortRecord> records;
  records.reserve(list.size());
  for (auto& path : list) {
    const auto key = keyOf(path);
    records.push_back({key, platform::AsciiLower(path), std::move(path)});
  }
  return records;
}

bool PathBefore(const SortRecord& a, const SortRecord& b) {
  const int order = a.folded.compare(b.folded);
  return order != 0 ? order < 0 : a.path < b.path;
}

bool Before(const SortRecord& a, const SortRecord& b) {
  const bool aHasKey = a.key >= 0;
  const bool bHasKey = b.key >= 0;
  if (aHasKey != bHasKey) return aHasKey;
  if (!aHasKey || a.key == b.key) return PathBefore(a, b);
  return a.key < b.key;
}

}  // namespace

void SortList(std::vector<std::string>& list, SortMethod method, bool reverse, const TimeOfPath& timeOf) {
  if (method == SortMethod::Custom) return;
  auto records = MakeRecords(list, method, timeOf);
  std::ranges::sort(records, [reverse](const auto& a, const auto& b) { return reverse ? Before(b, a) : Before(a, b); });
  std::ranges::transform(records, list.begin(), [](auto& record) { return std::move(record.path); });
}

}  // namespace ml::catalogue
