#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "imagefiles/look_ahead.h"

namespace ml::app {

class PictureView;
class Session;

/// Brings the current image onto the screen: has it and its neighbours made by the look-ahead, and lets its blown
/// highlights flash. The picture on show stays until the new one is ready; nothing is decoded on the window's thread.
class MainDisplay final : public QObject {
  Q_OBJECT

 public:
  MainDisplay(Session& session, PictureView& view, QObject* parent);
  ~MainDisplay() override;

  /// Shows the image at `index`, fitted into the view with a column of `columnWidth` pixels of the screen beside it.
  void Show(int index, int columnWidth);
  /// Takes the picture away; `message` shows.
  void Clear(const std::string& message);
  /// What is on its way is not shown any more; the picture on show stays.
  void Stop();
  /// The next Show() reads this file again.
  void Forget(const std::string& path) { lookAhead_.Forget(path); }
  void ForgetAll() { lookAhead_.ForgetAll(); }
  /// A picture is on its way.
  bool Busy() const { return busy_; }
  /// To be paused by whoever needs the files for himself.
  platform::WorkerGate& Gate() { return lookAhead_; }

 Q_SIGNALS:
  /// The session's `current` tells of another picture.
  void shown();
  /// From a thread of the look-ahead to this one.
  void ready(quint64 wish, ml::imagefiles::LookAhead::PicturePtr picture);

 private:
  imagefiles::DisplayOptions Options(int columnWidth) const;
  void Take(std::uint64_t wish, const imagefiles::LookAhead::PicturePtr& picture);
  void Present(const imagefiles::LookAhead::PicturePtr& picture);
  void OnBlinkTimer();
  void MarkViewingJpeg();
  void SetBusy(bool busy);
  void SetWaitCursor(bool wait);
  void HoldThumbnails();
  void ReleaseThumbnails();

  Session& session_;
  PictureView& view_;
  QTimer blink_;
  QTimer patience_;
  QTimer rest_;  ///< runs while no thumbnail is begun
  bool busy_ = false, waitCursor_ = false;
  int lastIndex_ = -1, direction_ = 1;
  std::uint64_t wanted_ = 0, given_ = 0;
  imagefiles::LookAhead lookAhead_;  ///< last: its threads tell of pictures by the signal above
};

}  // namespace ml::app
