#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <vector>

#include "batch/ui/screen_saver_hold.h"
#include "batch/ui/slideshow_player.h"
#include "imaging/pixel_buffer.h"

class QAction;
class QMenu;

namespace ml::batch::ui {

/// What the window needs of the program around it.
struct SlideshowHost {
  SlideshowPlayer::Making making;
  /// Called on the window's thread.
  std::function<void(const std::string& path, bool on)> setTag;
  /// Turns the file and returns when that is done; tells of failures itself, by boxes over `window`.
  std::function<void(const std::string& path, imaging::Turn turn, QWidget& window)> rotate;
};

/// The slideshow: the whole screen, black, one picture at a time, driven by keys, wheel and a menu. Run it by exec();
/// State() tells afterwards what it was left with.
class SlideshowWindow final : public QDialog {
  Q_OBJECT

 public:
  /// On the screen of `parent`. `pictures` outlives it.
  SlideshowWindow(SlideshowState state, TaggedPaths tagged, SlideshowHost host, SlideshowPictures& pictures,
                  QWidget* parent);
  ~SlideshowWindow() override;

  const SlideshowState& State() const { return player_.State(); }
  const SlideshowPlayer& Player() const { return player_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void done(int result) override;

 private:
  struct Command;
  static const Command kCommands[];

  QAction* AddAction(std::string_view text, const std::function<void()>& run);
  void AddActions();
  void UpdateActions();
  void FillMenu(QMenu& menu);
  void MeasureRoom();
  void ShowCursor();
  /// While `ask` asks something, the show stands still.
  void WithDialog(const std::function<void()>& ask);
  void ShowSlide();
  void Tell(const QString& sentence);
  void EditCaption();
  void Rotate(imaging::Turn turn);
  void Tag(bool on);
  bool ShowsImage() const { return !player_.Shown().path.empty(); }
  bool ShowsTagged() const { return player_.IsTagged(player_.Shown().path); }

  SlideshowHost host_;
  SlideshowPlayer player_;
  std::vector<QAction*> intervals_;
  std::vector<QAction*> commands_;  ///< as kCommands
  QTimer cursorRests_;
  int wheelRest_ = 0;  ///< eighths of a degree short of a notch
  ScreenSaverHold awake_;
};

}  // namespace ml::batch::ui
