#pragma once

#include <QObject>

#include "imagefiles/histogram_curves.h"

namespace ml::imagefiles::ui {
class HistogramWindow;
}

namespace ml::app {

class ControlColumn;
class Session;

/// The histogram of the image on show: in the column beside the picture and, where wanted, in a window of its own. The
/// settings hold its curves and the place of the window.
class HistogramDisplay final : public QObject {
  Q_OBJECT

 public:
  /// The window belongs to that of `column`.
  HistogramDisplay(Session& session, ControlColumn& column, QWidget* parent);

  /// Draws the counts of the session's current image.
  void Refresh();
  /// Opens the window, or closes it.
  void ToggleWindow();
  /// The thumbnail view goes without the window.
  void ModeChanged();

 Q_SIGNALS:
  /// The window came or went.
  void changed();

 private:
  void MakeWindow();
  void PlaceWindow();
  void Choose(const imagefiles::HistogramChannels& wanted);

  Session& session_;
  ControlColumn& column_;
  QWidget* parent_;
  imagefiles::ui::HistogramWindow* window_ = nullptr;  ///< made when it is first wanted
};

}  // namespace ml::app
