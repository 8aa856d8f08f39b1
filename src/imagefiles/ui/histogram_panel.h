#pragma once

#include <QWidget>

#include "imagefiles/histogram_curves.h"

namespace ml::imagefiles::ui {

/// The picture of a histogram: black left, white right, bars of intensity behind one curve a colour. Its own size is
/// 275 x 114; with less room all of it is drawn smaller.
class HistogramPanel final : public QWidget {
  Q_OBJECT

 public:
  explicit HistogramPanel(QWidget* parent = nullptr);

  /// An empty `counts` leaves the bare axes.
  void SetHistogram(const Histogram& counts, const HistogramChannels& wanted);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  HistogramCurves curves_;
};

}  // namespace ml::imagefiles::ui
