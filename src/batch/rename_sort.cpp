#include "batch/rename_sort.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <numeric>

#include "platform/name_pieces.h"
#include "platform/paths.h"

namespace ml::batch {
namespace {

constexpr std::int64_t kNoKey = -1;

/// The first run of digits of the whole name, its extension included.
std::int64_t NumberIn(const std::string& name) {
  const auto digits = platform::FirstDigits(name);
  if (digits.empty()) return kNoKey;
  std::int64_t number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return result.ec == std::errc() ? number : std::numeric_limits<std::int64_t>::max();
}

std::vector<std::int64_t> KeysOf(const std::vector<RenameImage>& images, RenameSort sort) {
  std::vector<std::int64_t> keys(images.size(), kNoKey);
  for (std::size_t i = 0; i < images.size(); ++i) {
    if (sort == RenameSort::Number) keys[i] = NumberIn(images[i].name);
    if (sort == RenameSort::Time) keys[i] = images[i].facts.shootingTime;
  }
  return keys;
}

}  // namespace

std::vector<std::size_t> SortedOrder(const std::vector<RenameImage>& images, RenameSort sort) {
  std::vector<std::size_t> order(images.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (sort == RenameSort::AsGiven) return order;
  const auto keys = KeysOf(images, sort);
  std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) {
    const bool aHasKey = keys[a] >= 0;
    const bool bHasKey = keys[b] >= 0;
    if (aHasKey != bHasKey) return aHasKey;
    if (aHasKey && keys[a] != keys[b]) return keys[a] < keys[b];
    return platform::CompareNoCase(images[a].name, images[b].name) < 0;
  });
  return order;
}

}  // namespace ml::batch
