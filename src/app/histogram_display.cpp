#include "app/histogram_display.h"

#include <QGuiApplication>
#include <QScreen>

#include "app/control_column.h"
#include "app/session.h"
#include "imagefiles/ui/histogram_window.h"

namespace ml::app {
namespace {

constexpr int kNeverPlaced = -1;
constexpr QPoint kFirstPlace{16, 16};

imagefiles::HistogramChannels ChannelsFrom(const settings::DisplaySettings& from) {
  return {.red = from.histogramRed != 0,
          .green = from.histogramGreen != 0,
          .blue = from.histogramBlue != 0,
          .intensity = from.histogramIntensity != 0};
}

}  // namespace

HistogramDisplay::HistogramDisplay(Session& session, ControlColumn& column, QWidget* parent)
    : QObject(parent), session_(session), column_(column), parent_(parent) {}

void HistogramDisplay::Refresh() {
  const auto wanted = ChannelsFrom(session_.settings.display);
  column_.ShowHistogram(session_.current.histogram, wanted);
  if (window_) window_->SetHistogram(session_.current.histogram, wanted);
}

void HistogramDisplay::ToggleWindow() {
  session_.memory.histogramShown = !session_.memory.histogramShown;
  ModeChanged();
}

void HistogramDisplay::ModeChanged() {
  const bool show = session_.memory.histogramShown && session_.mode != ViewMode::Thumbnails;
  if (show && !window_) MakeWindow();
  if (!window_ || show == window_->isVisible()) return;
  if (show) Refresh();
  window_->setVisible(show);
}

void HistogramDisplay::MakeWindow() {
  using imagefiles::ui::HistogramWindow;
  window_ = new HistogramWindow(parent_);
  PlaceWindow();
  connect(window_, &HistogramWindow::channelsChosen, this, &HistogramDisplay::Choose);
  connect(window_, &HistogramWindow::moved, this, [this](const QPoint& position) {
    session_.settings.display.histogramX = position.x();
    session_.settings.display.histogramY = position.y();
  });
  connect(window_, &HistogramWindow::closed, this, [this] {
    session_.memory.histogramShown = false;
    Q_EMIT changed();
  });
}

/// At first over a corner of the picture. The screen that it was on may be gone.
void HistogramDisplay::PlaceWindow() {
  const auto& from = session_.settings.display;
  const QPoint place(from.histogramX, from.histogramY);
  const bool placed = from.histogramX != kNeverPlaced || from.histogramY != kNeverPlaced;
  const bool useful = placed && QGuiApplication::screenAt(place) != nullptr;
  window_->move(useful ? place : parent_->mapToGlobal(kFirstPlace));
}

void HistogramDisplay::Choose(const imagefiles::HistogramChannels& wanted) {
  auto& to = session_.settings.display;
  to.histogramRed = wanted.red ? 1 : 0;
  to.histogramGreen = wanted.green ? 1 : 0;
  to.histogramBlue = wanted.blue ? 1 : 0;
  to.histogramIntensity = wanted.intensity ? 1 : 0;
  Refresh();
}

}  // namespace ml::app
