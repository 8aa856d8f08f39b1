#pragma once

#include <QWidget>
#include <array>

#include "imagefiles/histogram_curves.h"

class QCheckBox;

namespace ml::imagefiles::ui {

class HistogramPanel;

/// A small window of its own with the histogram of the image on show, and a box for each of its curves.
class HistogramWindow final : public QWidget {
  Q_OBJECT

 public:
  explicit HistogramWindow(QWidget* parent);

  void SetHistogram(const Histogram& counts, const HistogramChannels& wanted);

 Q_SIGNALS:
  void channelsChosen(const ml::imagefiles::HistogramChannels& wanted);
  void moved(const QPoint& position);
  /// By its own close button.
  void closed();

 protected:
  void moveEvent(QMoveEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  HistogramPanel* panel_;
  std::array<QCheckBox*, 4> boxes_{};  ///< red, green, blue, intensity
};

}  // namespace ml::imagefiles::ui
