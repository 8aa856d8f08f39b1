#include "batch/slideshow_order.h"

#include <algorithm>

namespace ml::batch {
namespace {

constexpr int kWheelNotch = 120;

int Wrapped(long long index, int count) { return static_cast<int>(((index % count) + count) % count); }

}  // namespace

int FirstInterval(const SlideshowState& state) { return std::max(state.interval, 1); }

void BuildShown(SlideshowState& state, const TaggedPaths& tagged) {
  const std::string current = state.CurrentPath() != nullptr ? *state.CurrentPath() : std::string();
  state.shown.clear();
  std::ranges::copy_if(state.allImages, std::back_inserter(state.shown),
                       [&](const auto& path) { return !state.taggedOnly || tagged.contains(path); });
  const auto place = std::ranges::find(state.shown, current);
  MoveTo(state, place == state.shown.end() ? 0 : static_cast<int>(place - state.shown.begin()));
}

void MoveTo(SlideshowState& state, int index) {
  state.current = index;
  state.drawn = -1;
}

std::optional<int> Upcoming(SlideshowState& state, const DrawNumber& draw) {
  const int count = state.Count();
  if (count == 0) return std::nullopt;
  if (!state.randomOrder) {
    if (state.current + 1 >= count && !state.loop) return std::nullopt;
    return (state.current + 1) % count;
  }
  while (state.drawn < 0 || (state.drawn == state.current && count > 1)) {
    state.drawn = static_cast<int>(draw() % static_cast<unsigned>(count));
  }
  return state.drawn;
}

std::optional<int> PlayIndex(const SlideshowState& state) {
  if (state.Count() <= 1) return std::nullopt;
  return (state.current + 1) % state.Count();
}

std::optional<int> IndexAfter(const SlideshowState& state, int steps) {
  const int count = state.Count();
  if (count == 0) return std::nullopt;
  const auto target = static_cast<long long>(state.current) + steps;
  const int index = state.loop ? Wrapped(target, count) : static_cast<int>(std::clamp(target, 0LL, count - 1LL));
  if (index == state.current) return std::nullopt;
  return index;
}

std::optional<int> WheelIndex(const SlideshowState& state, int delta) {
  return IndexAfter(state, -(delta / kWheelNotch));
}

bool TakeOutUntagged(SlideshowState& state, const std::string& path) {
  if (!state.taggedOnly) return false;
  const auto place = std::ranges::find(state.shown, path);
  if (place == state.shown.end()) return false;
  const int index = static_cast<int>(place - state.shown.begin());
  const bool wasCurrent = index == state.current;
  state.shown.erase(place);
  int current = index < state.current ? state.current - 1 : state.current;
  if (current >= state.Count()) current = 0;
  MoveTo(state, current);
  return wasCurrent;
}

}  // namespace ml::batch
