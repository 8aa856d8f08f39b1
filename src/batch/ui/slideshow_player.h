#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>
#include <chrono>
#include <random>
#include <vector>

#include "batch/slideshow_order.h"
#include "batch/ui/slideshow_pictures.h"

namespace ml::batch::ui {

/// What is on the screen.
struct Slide {
  std::string path;                           ///< empty: nothing yet, or nothing is in play
  imagefiles::LookAhead::PicturePtr picture;  ///< null only without a path
  std::vector<std::string> caption;
};

/// Lets a show run: keeps the interval from picture to picture and has the next ones made ahead. A slide stays on the
/// screen until its successor is there; nothing is decoded on the window's thread.
class SlideshowPlayer final : public QObject {
  Q_OBJECT

 public:
  /// How pictures are made, their size and quality aside.
  struct Making {
    imagefiles::ImageFileOptions file;
    imagefiles::ColourOptions colour;
    SlideshowPictures::Expand expand;
  };

  /// `pictures` outlives it.
  SlideshowPlayer(SlideshowState state, TaggedPaths tagged, Making making, SlideshowPictures& pictures,
                  QObject* parent);
  ~SlideshowPlayer() override;

  const SlideshowState& State() const { return state_; }
  const Slide& Shown() const { return slide_; }
  bool Playing() const { return playing_; }
  bool IsTagged(const std::string& path) const { return tagged_.contains(path); }

  /// The room for picture and caption, and the height of a line of it, in pixels of the screen. The first call
  /// begins the show.
  void SetRoom(const QSize& pixels, int captionLineHeight);
  void Play();
  void Pause();
  /// To the next image or, with -1, the one before.
  void Step(int steps);
  /// Eighths of a degree.
  void TurnWheel(int delta);
  void SetInterval(int seconds);
  void SetRandomOrder(bool on);
  void SetLoop(bool on);
  void SetTaggedOnly(bool on);
  void SetTag(const std::string& path, bool on);
  void SetQuality(bool highQuality, bool blackAndWhite);
  void SetCaption(bool show, bool below);
  void SetFormatString(const std::string& format);
  /// The show does not move on meanwhile.
  void SetDialogOpen(bool open) { state_.dialogOpen = open; }
  /// The file has other contents now.
  void FileChanged(const std::string& path);

 Q_SIGNALS:
  /// To be painted at once.
  void slideChanged();
  /// There is no such image; the show pauses.
  void failed(const QString& sentence);

 private:
  using Clock = std::chrono::steady_clock;

  void OnTimer();
  void ApplyRules();
  void GoTo(std::optional<int> index);
  void ShowImage();
  void ShowNothing();
  imagefiles::PictureWish WishFor(const std::string& path);
  void Take(quint64 wish, const imagefiles::LookAhead::PicturePtr& picture);
  void Present(const std::string& path, const imagefiles::LookAhead::PicturePtr& picture);
  void MakeCaption();
  void SetNextTick();
  void Arm();

  SlideshowState state_;
  TaggedPaths tagged_;
  const Making making_;
  SlideshowPictures& pictures_;
  std::mt19937 random_;
  QSize room_;
  int lineHeight_ = 1;
  Slide slide_;
  struct Wish {
    quint64 number = 0;
    std::string path;
  };
  std::vector<Wish> awaited_;  ///< in ascending order
  bool playing_ = false;
  bool onTime_ = false;  ///< the next picture is to follow the last one by the interval
  std::chrono::seconds interval_{};
  Clock::time_point due_;
  QTimer timer_;
};

}  // namespace ml::batch::ui
