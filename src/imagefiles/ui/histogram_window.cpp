#include "imagefiles/ui/histogram_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMoveEvent>
#include <QVBoxLayout>

#include "imagefiles/ui/histogram_panel.h"

namespace ml::imagefiles::ui {
namespace {

constexpr int kMargin = 8;

struct ChannelRow {
  const char16_t* text;
  bool HistogramChannels::*wanted;
};
constexpr std::array<ChannelRow, 4> kChannels{{{u"&Red", &HistogramChannels::red},
                                               {u"&Green", &HistogramChannels::green},
                                               {u"&Blue", &HistogramChannels::blue},
                                               {u"&Intensity", &HistogramChannels::intensity}}};

}  // namespace

HistogramWindow::HistogramWindow(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      panel_(new HistogramPanel(this)) {
  setWindowTitle(QStringLiteral("Histogram"));
  setObjectName(QStringLiteral("HistogramWindow"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  panel_->setMinimumSize(panel_->sizeHint());
  layout->addWidget(panel_);
  auto* boxes = new QHBoxLayout;
  layout->addLayout(boxes);
  for (std::size_t i = 0; i < kChannels.size(); ++i) {
    boxes_[i] = new QCheckBox(QString::fromUtf16(kChannels[i].text), this);
    boxes->addWidget(boxes_[i]);
    connect(boxes_[i], &QCheckBox::clicked, this, [this] {
      HistogramChannels wanted;
      for (std::size_t n = 0; n < kChannels.size(); ++n) wanted.*kChannels[n].wanted = boxes_[n]->isChecked();
      Q_EMIT channelsChosen(wanted);
    });
  }
}

void HistogramWindow::SetHistogram(const Histogram& counts, const HistogramChannels& wanted) {
  panel_->SetHistogram(counts, wanted);
  for (std::size_t i = 0; i < kChannels.size(); ++i) boxes_[i]->setChecked(wanted.*kChannels[i].wanted);
}

void HistogramWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (isVisible()) Q_EMIT moved(pos());
}

void HistogramWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  Q_EMIT closed();
}

}  // namespace ml::imagefiles::ui
