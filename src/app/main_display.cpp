#include "app/main_display.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "app/navigation.h"
#include "app/picture_view.h"
#include "app/session.h"
#include "imagefiles/display_limits.h"
#include "options/engine_options.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using imagefiles::LookAhead;
using PixelsPtr = std::shared_ptr<const imaging::PixelBuffer>;

constexpr int kBlinkMilliseconds = 750;
/// A cursor that changes for each picture would only flicker.
constexpr int kPatienceMilliseconds = 150;
/// Longer than from key to key while one is held down.
constexpr int kRestMilliseconds = 200;

std::optional<imagefiles::HighlightOptions> HighlightOptionsFrom(const settings::DisplaySettings& from) {
  if (from.highlightBlink == 0) return std::nullopt;
  using imagefiles::HighlightMethod;
  return imagefiles::HighlightOptions{
      .method = from.highlightBlinkMethod == 1 ? HighlightMethod::RgbValue : HighlightMethod::Luminosity,
      .threshold = from.highlightBlinkThreshold};
}

/// On a thread of the look-ahead, so what it develops with is its own.
imagefiles::DisplayPicture MakePicture(const std::string& path, const imagefiles::DisplayOptions& options) {
  const auto developer = options.developEos1D ? rawconvert::MakeRawDeveloper() : nullptr;
  return imagefiles::MakeDisplayPicture(path, options, developer.get());
}

}  // namespace

MainDisplay::MainDisplay(Session& session, PictureView& view, QObject* parent)
    : QObject(parent),
      session_(session),
      view_(view),
      lookAhead_(
          MakePicture,
          [this](std::uint64_t wish, LookAhead::PicturePtr picture) { Q_EMIT ready(wish, std::move(picture)); },
          LookAhead::UsualProcessors()) {
  blink_.setInterval(kBlinkMilliseconds);
  connect(&blink_, &QTimer::timeout, this, &MainDisplay::OnBlinkTimer);
  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMilliseconds);
  connect(&patience_, &QTimer::timeout, this, [this] { SetWaitCursor(busy_); });
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, [this] { busy_ ? rest_.start() : ReleaseThumbnails(); });
  connect(this, &MainDisplay::ready, this, &MainDisplay::Take, Qt::QueuedConnection);
}

MainDisplay::~MainDisplay() { SetWaitCursor(false); }

imagefiles::DisplayOptions MainDisplay::Options(int columnWidth) const {
  const auto room = view_.PixelSize();
  const auto& from = session_.settings.display;
  const auto optimise = static_cast<imagefiles::OptimiseSize>(std::clamp(from.optimiseSize, 0, 2));
  return {.limits = imagefiles::ApplyDisplayLimits({room.width(), room.height(), columnWidth}, optimise),
          .quality = {.highQuality = from.highQualityMode != 0, .greyscale = session_.memory.blackAndWhite},
          .file = session_.ImageOptions(),
          .colour = options::ColourOptionsOf(session_.settings),
          .highlights = HighlightOptionsFrom(from),
          .focusPoints = from.showFocusPoints != 0,
          .developEos1D = session_.settings.raw.convertEos1DRawInMainView != 0};
}

void MainDisplay::Show(int index, int columnWidth) {
  const auto& files = session_.list.files;
  const int count = session_.list.Count();
  if (index != lastIndex_) direction_ = DirectionOf(lastIndex_, index, count);
  lastIndex_ = index;
  imagefiles::PictureWish wish{
      .path = files[static_cast<std::size_t>(index)], .neighbours = {}, .options = Options(columnWidth)};
  const bool wraparound = session_.settings.catalogue.wraparound != 0;
  for (const int neighbour : Neighbours(index, direction_, count, wraparound)) {
    wish.neighbours.push_back(files[static_cast<std::size_t>(neighbour)]);
  }
  HoldThumbnails();
  const auto answer = lookAhead_.Want(std::move(wish));
  wanted_ = answer.wish;
  SetBusy(answer.picture == nullptr);
  if (answer.picture) Take(answer.wish, answer.picture);
}

void MainDisplay::Stop() {
  lookAhead_.WantNothing();
  given_ = wanted_;
  SetBusy(false);
  ReleaseThumbnails();
}

/// The picture on show and those beside it go before thumbnails, until the user rests.
void MainDisplay::HoldThumbnails() {
  session_.Worker().GiveWay();
  rest_.start();
}

void MainDisplay::ReleaseThumbnails() {
  rest_.stop();
  session_.Worker().GoOn();
}

void MainDisplay::Clear(const std::string& message) {
  Stop();
  lookAhead_.ForgetAll();
  auto none = std::make_shared<imagefiles::DisplayPicture>();
  none->failure = message;
  Present(none);
}

/// What was wanted a moment ago is shown too: while a key is held down the pictures go past.
void MainDisplay::Take(std::uint64_t wish, const LookAhead::PicturePtr& picture) {
  if (wish <= given_) return;
  given_ = wish;
  if (wish == wanted_) SetBusy(false);
  Present(picture);
  if (wish == wanted_) MarkViewingJpeg();
}

void MainDisplay::Present(const LookAhead::PicturePtr& picture) {
  session_.current = {.width = picture->main.width, .height = picture->main.height, .histogram = picture->histogram};
  view_.SetMessage(platform::ui::ToQString(picture->failure));
  view_.SetPicture(PixelsPtr(picture, &picture->main), PixelsPtr(picture, &picture->blink));
  if (picture->blink.Empty()) {
    blink_.stop();
  } else if (!blink_.isActive()) {
    blink_.start();
  }
  Q_EMIT shown();
}

void MainDisplay::OnBlinkTimer() {
  const auto& list = session_.list;
  if (session_.mode != ViewMode::Thumbnails && list.ValidIndex(list.currentIndex)) view_.Blink();
}

/// The camera's viewing JPEG came along with the picture: the thumbnail and its mark are made anew.
void MainDisplay::MarkViewingJpeg() {
  const int index = session_.list.currentIndex;
  const auto* item = session_.Worker().Item(index);
  if (item != nullptr && item->hasViewingJpeg) session_.Worker().InvalidateEntries({index});
}

void MainDisplay::SetBusy(bool busy) {
  busy_ = busy;
  if (!busy) {
    patience_.stop();
    SetWaitCursor(false);
  } else if (!patience_.isActive() && !waitCursor_) {
    patience_.start();
  }
}

void MainDisplay::SetWaitCursor(bool wait) {
  if (wait == waitCursor_) return;
  waitCursor_ = wait;
  wait ? QGuiApplication::setOverrideCursor(Qt::WaitCursor) : QGuiApplication::restoreOverrideCursor();
}

}  // namespace ml::app
