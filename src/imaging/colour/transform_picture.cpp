#include "imaging/colour/transform_picture.h"

#include <algorithm>
#include <list>
#include <utility>

namespace ml::imaging {
namespace {

/// Cameras and editors bring a handful of profiles into one directory.
constexpr std::size_t kRemembered = 4;
/// Longer ones are keys that cost more memory than they are worth.
constexpr std::size_t kLongestKey = std::size_t{1} << 20;

struct Key {
  ProfileSource from, to;
  RenderingIntent intent;
  PixelOrder order;
  bool operator==(const Key&) const = default;
};

struct Remembered {
  Key key;
  ColourTransform transform;

  explicit Remembered(const Key& made)
      : key(made), transform(made.from.Open(), made.to.Open(), made.intent, made.order) {}
};

/// Stays valid until the next call on the same thread.
const ColourTransform& TransformFor(const Key& key) {
  thread_local std::list<Remembered> recent;  // the one used last comes first
  const auto known = std::ranges::find(recent, key, &Remembered::key);
  if (known != recent.end()) {
    recent.splice(recent.begin(), recent, known);
  } else {
    recent.emplace_front(key);
    if (recent.size() > kRemembered) recent.pop_back();
  }
  return recent.front().transform;
}

}  // namespace

bool TransformPicture(PixelBuffer& picture, ProfileSource from, ProfileSource to, RenderingIntent intent) {
  if (picture.Empty() || picture.bytesPerSample != 1) return false;
  const auto apply = [&](const ColourTransform& transform) {
    transform.Apply(picture);
    return static_cast<bool>(transform);
  };
  const bool longKey = from.Size() > kLongestKey || to.Size() > kLongestKey;
  const Key key{std::move(from), std::move(to), intent, picture.order};
  if (longKey) return apply(Remembered(key).transform);
  return apply(TransformFor(key));
}

}  // namespace ml::imaging
