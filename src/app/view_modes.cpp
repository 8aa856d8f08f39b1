// The part of the view that decides which panes show, and where.
#include <QEvent>
#include <QSplitter>
#include <algorithm>

#include "app/control_column.h"
#include "app/main_display.h"
#include "app/marrowlantern_view.h"
#include "app/picture_view.h"
#include "app/summary_pane.h"
#include "catalogue/ui/thumbnail_list_view.h"

namespace ml::app {
namespace {

constexpr int kControlsWidth = 291;  // the histogram at its own size, and the margins
/// A strip shows its cells whole up to this width; cells wider than that would take the place of the picture.
constexpr int kWidestStripByItself = 300;

}  // namespace

void CMarrowlanternView::SetViewMode(ViewMode mode) {
  const auto old = session_.mode;
  if (mode == old) return;
  session_.mode = mode;
  Q_EMIT colourUnderMouse({});
  if (IsFilmStrip(old) && IsFilmStrip(mode)) SetPlaces(LimitedTo(Places(), width(), height()));
  if (mode == ViewMode::Thumbnails) display_->Stop();
  // A pane that hides with the focus would hand it on as if by the Tab key.
  if (auto* focused = focusWidget(); focused && focused->hasFocus()) focused->clearFocus();
  ArrangeFilmStrip();
  ApplyLayout();
  if (old == ViewMode::Main) {
    BringFocusToCurrent();
  } else if (old == ViewMode::Thumbnails) {
    LoadImage(session_.list.currentIndex, Reload::Force);
  }
  BringTargetIntoSight();
  // Once more when the panes have got their sizes, which they do with events that still come.
  QMetaObject::invokeMethod(this, &CMarrowlanternView::BringTargetIntoSight, Qt::QueuedConnection);
  FocusMainPane();
  Q_EMIT viewModeChanged(mode);
}

void CMarrowlanternView::BringTargetIntoSight() {
  if (session_.mode != ViewMode::Main) thumbnails_->ScrollTo(session_.TargetIndex());
}

/// Between picture and shooting data the strip is a pane of their splitter, else it stands beside them.
void CMarrowlanternView::ArrangeFilmStrip() {
  using catalogue::ui::ThumbnailListView;
  const bool below = session_.mode == ViewMode::FilmStripBelow;
  thumbnails_->SetArrangement(below ? ThumbnailListView::Arrangement::Columns : ThumbnailListView::Arrangement::Rows);
  const int column = std::clamp(thumbnails_->OneColumnWidth(), kLeastPane, kWidestStripByItself);
  thumbnails_->setMinimumWidth(below ? 0 : column);
  if (below) {
    if (film_->indexOf(thumbnails_) < 0) film_->insertWidget(1, thumbnails_);
    thumbnails_->setFixedHeight(thumbnails_->OneLineHeight());
  } else {
    // First the height: a splitter that gets a flat pane beside others becomes as flat.
    thumbnails_->setMinimumHeight(0);
    thumbnails_->setMaximumHeight(QWIDGETSIZE_MAX);
    if (center_->indexOf(thumbnails_) < 0) center_->insertWidget(0, thumbnails_);
  }
  for (int pane = 1; pane < film_->count(); ++pane) film_->handle(pane)->installEventFilter(this);
  // The keys go to the strip; the picture follows it.
  picture_->setFocusPolicy(session_.mode == ViewMode::Main ? Qt::StrongFocus : Qt::NoFocus);
  for (int pane = 0; pane < film_->count(); ++pane) film_->setStretchFactor(pane, film_->widget(pane) == picture_);
}

/// Coming from the picture, the list stands at the image that was on show. A selection of several images is
/// not given up for that.
void CMarrowlanternView::BringFocusToCurrent() {
  auto& list = session_.list;
  if (!list.ValidIndex(list.currentIndex)) return;
  if (list.SelectedCount() < 2) list.SelectOnly(list.currentIndex);
  list.focusIndex = list.currentIndex;
  thumbnails_->MarksChanged();
  thumbnails_->ScrollTo(list.currentIndex, QAbstractItemView::PositionAtTop);
}

void CMarrowlanternView::ApplyLayout() {
  const auto& from = session_.settings.catalogue;
  const auto layout = LayoutOf({.mode = session_.mode,
                                .fullView = from.fullView != 0,
                                .places = Places(),
                                .width = width(),
                                .height = height(),
                                .controlsWidth = kControlsWidth,
                                .stripHeight = thumbnails_->OneLineHeight()});
  left_->setVisible(layout.tree);
  thumbnails_->setVisible(layout.list);
  film_->setVisible(layout.picture);
  lower_->setVisible(layout.lowerPane);
  controls_->setVisible(layout.controls);
  outer_->setSizes({layout.treeWidth, std::max(layout.listWidth, layout.pictureWidth), layout.controlsWidth});
  if (session_.mode == ViewMode::FilmStripBelow) {
    film_->setSizes({height() - layout.listHeight - layout.lowerHeight, layout.listHeight, layout.lowerHeight});
  } else {
    center_->setSizes({layout.listWidth, layout.pictureWidth});
    film_->setSizes({height() - layout.lowerHeight, layout.lowerHeight});
  }
}

SplitterPlaces CMarrowlanternView::Places() const {
  const auto& from = session_.settings.catalogue;
  return {from.splitterPos, from.filmStripSplitterPos, from.filmStripHorizontalSplitterPos};
}

void CMarrowlanternView::SetPlaces(const SplitterPlaces& places) {
  auto& to = session_.settings.catalogue;
  to.splitterPos = places.tree;
  to.filmStripSplitterPos = places.strip;
  to.filmStripHorizontalSplitterPos = places.lowerPane;
}

/// The user moved a splitter.
void CMarrowlanternView::TakePlaces() {
  auto places = Places();
  if (left_->isVisible()) places.tree = outer_->sizes().first();
  if (session_.mode == ViewMode::FilmStripSide) places.strip = center_->sizes().first();
  if (IsFilmStrip(session_.mode) && lower_->isVisible()) {
    const int height = film_->sizes().last();
    // It comes back as it was, not as small as the mouse made it on the way.
    if (height == 0 && lowerBeforeDrag_ > 0) places.lowerPane = lowerBeforeDrag_;
    places = WithLowerPaneAt(places, height);
  }
  SetPlaces(places);
}

bool CMarrowlanternView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) lowerBeforeDrag_ = Places().lowerPane;
  return QWidget::eventFilter(watched, event);
}

void CMarrowlanternView::ToggleLowerPane() {
  SetPlaces(WithLowerPaneToggled(Places()));
  ApplyLayout();
}

void CMarrowlanternView::OpenPanes() {
  SetPlaces(WithPanesOpened(Places()));
  ApplyLayout();
}

void CMarrowlanternView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ApplyLayout();
}

}  // namespace ml::app
