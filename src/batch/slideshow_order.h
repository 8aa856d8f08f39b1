#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// The slideshow without its window: which image comes when.
namespace ml::batch {

struct SlideshowState {
  int interval = 4;  ///< seconds from picture to picture; 0 means as fast as pictures come
  std::string formatString = "@dir@@file@ [@imageNumber@ of @numberOfImages@]";  ///< of the caption
  bool taggedOnly = false, randomOrder = false;
  bool bottomCaption = false;  ///< the caption stands below the picture, not over it
  bool showCaption = true;
  bool highQuality = false, blackAndWhite = false;
  int current = 0;  ///< index in `shown`
  bool loop = true;
  bool dialogOpen = false;             ///< something is being asked: the show does not move on
  std::vector<std::string> allImages;  ///< full paths
  std::vector<std::string> shown;      ///< those in play, in the same order
  int drawn = -1;                      ///< what the next tick shows in random order; -1 before it is drawn

  int Count() const { return static_cast<int>(shown.size()); }
  /// Null if no image is in play.
  const std::string* CurrentPath() const { return shown.empty() ? nullptr : &shown[static_cast<std::size_t>(current)]; }
};

using TaggedPaths = std::unordered_set<std::string>;
using DrawNumber = std::function<unsigned()>;

/// Seconds of the first interval of a show: 0 and less, which an old setting may hold, count as 1.
int FirstInterval(const SlideshowState& state);

/// Fills `shown`. The current image stays current by its path; if it is not in play any more, the first one is.
void BuildShown(SlideshowState& state, const TaggedPaths& tagged);

/// Makes the image at `index` (a valid one) the current one.
void MoveTo(SlideshowState& state, int index);

/// What the next tick of the timer shows; nothing if the show is over or empty. Asked again it answers the same until
/// the state changes, so that the picture can be made ready. In random order it is drawn from all other images, seen or
/// not; the only image comes again and again.
std::optional<int> Upcoming(SlideshowState& state, const DrawNumber& draw);

/// What Play shows at once; nothing if there is nothing to play.
std::optional<int> PlayIndex(const SlideshowState& state);

/// The image `steps` further, over the ends only with `loop`; nothing if that is the current one.
std::optional<int> IndexAfter(const SlideshowState& state, int steps);

/// The same for a turn of the wheel, in eighths of a degree, 120 a notch, positive away from the user.
std::optional<int> WheelIndex(const SlideshowState& state, int delta);

/// The image at `path` lost its tag: it goes out of play where only tagged ones are shown, and the one behind it takes
/// its place, or else the first. Returns whether another image is the current one now, or none.
bool TakeOutUntagged(SlideshowState& state, const std::string& path);

/// What the menu offers; a tab stands between text and key.
struct SlideshowInterval {
  int seconds;
  std::string_view text;
};
inline constexpr SlideshowInterval kSlideshowIntervals[] = {
    {0, "As &fast as possible\tCtrl+F"},
    {1, "&1 sec\tCtrl+1"},
    {2, "&2 sec\tCtrl+2"},
    {3, "&3 sec\tCtrl+3"},
    {4, "&4 sec\tCtrl+4"},
    {5, "&5 sec\tCtrl+5"},
    {6, "&6 sec\tCtrl+6"},
    {7, "&7 sec\tCtrl+7"},
    {8, "&8 sec\tCtrl+8"},
    {9, "&9 sec\tCtrl+9"},
    {10, "1&0 sec\tCtrl+0"},
    {15, "15 sec"},
    {30, "30 sec"},
    {60, "1 minute"},
    {300, "5 minutes"},
    {600, "10 minutes"},
};

}  // namespace ml::batch
