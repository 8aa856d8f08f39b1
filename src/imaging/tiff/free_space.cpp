#include "imaging/tiff/free_space.h"

#include <algorithm>
#include <array>
#include <limits>

#include "imaging/tiff/messages.h"
#include "platform/errors.h"

namespace ml::imaging {

using metadata::FileRange;

void FreeSpace::Add(FileRange range) {
  range = metadata::CutToSource(range, file_);
  if (range.size == 0) return;
  // Those that overlap or touch become one. What lies between is padding if no value could stand there.
  constexpr std::uint64_t padding = 3;
  const auto touches = [&](const FileRange& other) { return other.position <= range.End() + padding; };
  const auto first =
      std::ranges::find_if(free_, [&](const FileRange& other) { return other.End() + padding >= range.position; });
  auto last = first;
  while (last != free_.end() && touches(*last)) {
    const auto end = std::max(range.End(), last->End());
    range.position = std::min(range.position, last->position);
    range.size = end - range.position;
    ++last;
  }
  free_.insert(free_.erase(first, last), range);
}

void FreeSpace::Keep(FileRange range) {
  std::vector<FileRange> rest;
  for (const auto& part : free_) {
    const auto before = std::min(part.End(), std::max(range.position, part.position));
    const auto after = std::max(part.position, std::min(range.End(), part.End()));
    if (before >= after) {
      rest.push_back(part);
      continue;
    }
    if (before > part.position) rest.push_back({part.position, before - part.position});
    if (after < part.End()) rest.push_back({after, part.End() - after});
  }
  free_ = std::move(rest);
}

void FreeSpace::CutEnd() {
  if (free_.empty() || free_.back().End() != file_.Size()) return;
  file_.Remove(free_.back());
  free_.pop_back();
}

std::uint32_t FreeSpace::Put(std::span<const std::byte> bytes, Alignment alignment) {
  const std::uint64_t unit = alignment == Alignment::Even ? 2 : 1;
  const auto rest = [&](const FileRange& part) {
    const auto needed = part.position % unit + bytes.size();
    return part.size >= needed ? part.size - needed : std::numeric_limits<std::uint64_t>::max();
  };
  const auto tightest = std::ranges::min_element(free_, {}, rest);
  if (tightest != free_.end() && rest(*tightest) <= tightest->size) {
    const auto position = tightest->position + tightest->position % unit;
    *tightest = {position + bytes.size(), rest(*tightest)};
    file_.Overwrite(position, bytes);
    return static_cast<std::uint32_t>(position);
  }
  const auto position = file_.Size() + file_.Size() % unit;
  if (position + bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
    throw platform::LibraryError(messages::kTiffTooLarge, "");
  }
  if (position > file_.Size()) file_.Append(std::array{std::byte{0}});
  file_.Append(bytes);
  return static_cast<std::uint32_t>(position);
}

}  // namespace ml::imaging
