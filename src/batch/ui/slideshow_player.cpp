#include "batch/ui/slideshow_player.h"

#include <algorithm>
#include <utility>

#include "batch/slideshow_caption.h"
#include "imagefiles/messages.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

using imagefiles::LookAhead;

/// The timer counts in an int, so a long interval is waited for in pieces.
constexpr std::chrono::milliseconds kLongestWait = std::chrono::hours(1);

unsigned SeedFromClock() { return static_cast<unsigned>(std::chrono::system_clock::now().time_since_epoch().count()); }

}  // namespace

SlideshowPlayer::SlideshowPlayer(SlideshowState state, TaggedPaths tagged, Making making, SlideshowPictures& pictures,
                                 QObject* parent)
    : QObject(parent),
      state_(std::move(state)),
      tagged_(std::move(tagged)),
      making_(std::move(making)),
      pictures_(pictures),
      random_(SeedFromClock()) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &SlideshowPlayer::OnTimer);
  connect(&pictures_, &SlideshowPictures::ready, this, &SlideshowPlayer::Take, Qt::QueuedConnection);
  BuildShown(state_, tagged_);
  interval_ = std::chrono::seconds(FirstInterval(state_));
  playing_ = true;
}

SlideshowPlayer::~SlideshowPlayer() { pictures_.Clear(); }

void SlideshowPlayer::SetRoom(const QSize& pixels, int captionLineHeight) {
  if (pixels == room_ && captionLineHeight == lineHeight_) return;
  room_ = pixels;
  lineHeight_ = captionLineHeight;
  ApplyRules();
}

/// Captions take other room, or none.
void SlideshowPlayer::ApplyRules() {
  pictures_.SetRules({.formatString = state_.showCaption ? state_.formatString : std::string(),
                      .below = state_.bottomCaption,
                      .lineHeight = lineHeight_},
                     making_.expand);
  ShowImage();
}

void SlideshowPlayer::Play() {
  const auto index = PlayIndex(state_);
  if (playing_ || !index) return;
  playing_ = true;
  interval_ = std::chrono::seconds(std::max(state_.interval, 0));
  GoTo(index);
}

void SlideshowPlayer::Pause() {
  playing_ = false;
  timer_.stop();
}

void SlideshowPlayer::Step(int steps) {
  Pause();
  GoTo(IndexAfter(state_, steps));
}

void SlideshowPlayer::TurnWheel(int delta) {
  Pause();
  GoTo(WheelIndex(state_, delta));
}

void SlideshowPlayer::SetInterval(int seconds) {
  state_.interval = seconds;
  if (!playing_) return;
  Pause();
  Play();
}

void SlideshowPlayer::SetRandomOrder(bool on) {
  state_.randomOrder = on;
  if (!awaited_.empty()) return ShowImage();
  if (!state_.shown.empty()) pictures_.Want(WishFor(*state_.CurrentPath()));  // what will come next is another one
}

void SlideshowPlayer::SetLoop(bool on) { state_.loop = on; }

void SlideshowPlayer::SetTaggedOnly(bool on) {
  state_.taggedOnly = on;
  BuildShown(state_, tagged_);
  ShowImage();
}

void SlideshowPlayer::SetTag(const std::string& path, bool on) {
  on ? void(tagged_.insert(path)) : void(tagged_.erase(path));
  if (!on && TakeOutUntagged(state_, path)) return ShowImage();
  MakeCaption();
  Q_EMIT slideChanged();
}

void SlideshowPlayer::SetQuality(bool highQuality, bool blackAndWhite) {
  state_.highQuality = highQuality;
  state_.blackAndWhite = blackAndWhite;
  ShowImage();
}

void SlideshowPlayer::SetCaption(bool show, bool below) {
  state_.showCaption = show;
  state_.bottomCaption = below;
  ApplyRules();
}

void SlideshowPlayer::SetFormatString(const std::string& format) {
  state_.formatString = format;
  ApplyRules();
}

void SlideshowPlayer::FileChanged(const std::string& path) {
  pictures_.Forget(path);
  ShowImage();
}

void SlideshowPlayer::OnTimer() {
  if (Clock::now() < due_) return Arm();
  if (state_.dialogOpen || state_.shown.empty()) {
    due_ = Clock::now() + std::max<Clock::duration>(interval_, std::chrono::milliseconds(100));
    return Arm();
  }
  const auto index = Upcoming(state_, [this] { return static_cast<unsigned>(random_()); });
  if (!index) return Pause();
  onTime_ = true;
  GoTo(index);
}

void SlideshowPlayer::GoTo(std::optional<int> index) {
  if (!index) return;
  MoveTo(state_, *index);
  ShowImage();
}

void SlideshowPlayer::ShowImage() {
  timer_.stop();
  if (state_.shown.empty()) return ShowNothing();
  const auto path = *state_.CurrentPath();
  auto answer = pictures_.Want(WishFor(path));
  if (answer.picture) {
    awaited_.clear();
    return Present(path, answer.picture);
  }
  onTime_ = false;
  awaited_.push_back({answer.wish, path});
}

void SlideshowPlayer::ShowNothing() {
  pictures_.WantNothing();
  awaited_.clear();
  slide_ = {};
  if (playing_) SetNextTick();
  Q_EMIT slideChanged();
}

/// With what will be asked for next, by the timer or by a key.
imagefiles::PictureWish SlideshowPlayer::WishFor(const std::string& path) {
  imagefiles::PictureWish wish;
  wish.path = path;
  wish.options.limits = {.maxWidth = room_.width(), .maxHeight = room_.height()};
  wish.options.quality = {.highQuality = state_.highQuality, .greyscale = state_.blackAndWhite};
  wish.options.file = making_.file;
  wish.options.colour = making_.colour;
  const auto add = [&](std::optional<int> index) {
    if (!index) return;
    const auto& neighbour = state_.shown[static_cast<std::size_t>(*index)];
    if (neighbour != path && std::ranges::find(wish.neighbours, neighbour) == wish.neighbours.end()) {
      wish.neighbours.push_back(neighbour);
    }
  };
  add(Upcoming(state_, [this] { return static_cast<unsigned>(random_()); }));
  for (const int steps : {1, 2, -1}) add(IndexAfter(state_, steps));
  return wish;
}

/// A picture whose successor is wanted by now is shown too: while a key is held down they go past.
void SlideshowPlayer::Take(quint64 wish, const LookAhead::PicturePtr& picture) {
  const auto place = std::ranges::find(awaited_, wish, &Wish::number);
  if (place == awaited_.end()) return;
  const auto path = place->path;
  awaited_.erase(awaited_.begin(), place + 1);
  Present(path, picture);
}

void SlideshowPlayer::Present(const std::string& path, const LookAhead::PicturePtr& picture) {
  slide_.path = path;
  slide_.picture = picture;
  MakeCaption();
  const bool missing = picture->failure == imagefiles::messages::NoSuchImage(path);
  if (missing) Pause();
  if (playing_ && awaited_.empty()) SetNextTick();
  Q_EMIT slideChanged();
  if (missing) Q_EMIT failed(platform::ui::ToQString(picture->failure));
}

void SlideshowPlayer::MakeCaption() {
  slide_.caption.clear();
  const auto place = std::ranges::find(state_.shown, slide_.path);
  if (!state_.showCaption || place == state_.shown.end()) return;
  slide_.caption = CaptionLines(pictures_.CaptionOf(slide_.path), static_cast<int>(place - state_.shown.begin()) + 1,
                                state_.Count());
}

/// Counted from when the last picture was due, so that delays of a few milliseconds do not add up; from now where it
/// came late or out of turn.
void SlideshowPlayer::SetNextTick() {
  const auto now = Clock::now();
  const auto begin = std::exchange(onTime_, false) ? due_ : now;
  due_ = std::max(begin + interval_, now);
  Arm();
}

void SlideshowPlayer::Arm() {
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(due_ - Clock::now());
  timer_.start(std::clamp(wait, std::chrono::milliseconds(0), kLongestWait));
}

}  // namespace ml::batch::ui
