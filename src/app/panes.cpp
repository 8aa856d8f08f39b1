#include "app/panes.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSplitter>
#include <algorithm>

#include "app/control_column.h"
#include "app/picture_view.h"
#include "app/session.h"
#include "app/summary_pane.h"
#include "catalogue/ui/directory_tree.h"
#include "catalogue/ui/thumbnail_list_view.h"

namespace ml::app {
namespace {

constexpr int kControlsWidth = 291;  // the histogram at its own size, and the margins
/// A strip shows its cells whole up to this width; cells wider than that would take the place of the picture.
constexpr int kWidestStripByItself = 300;
constexpr int kLeastLowerPane = 40;
constexpr int kTreeHeight = 440, kSummaryHeight = 220;

}  // namespace

Panes::Panes(Session& session, QWidget& parent)
    : session_(session),
      parent_(parent),
      outer_(new QSplitter(Qt::Horizontal, &parent)),
      left_(new QSplitter(Qt::Vertical, outer_)),
      center_(new QSplitter(Qt::Horizontal, outer_)),
      tree_(new catalogue::ui::DirectoryTree(left_)),
      thumbnails_(new catalogue::ui::ThumbnailListView(session.list, session.Worker(), center_)),
      picture_(new PictureView(center_)),
      controls_(new ControlColumn(outer_)),
      summary_(new SummaryPane(left_)),
      film_(new QSplitter(Qt::Vertical, center_)),
      lower_(new SummaryPane(film_)) {
  auto* layout = new QHBoxLayout(&parent);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(outer_);
  film_->insertWidget(0, picture_);
  for (auto* splitter : {outer_, left_, center_, film_}) {
    splitter->setHandleWidth(kSplitterWidth);
    splitter->setChildrenCollapsible(false);
  }
  film_->setCollapsible(film_->indexOf(lower_), true);
  lower_->setAccessibleName(QStringLiteral("Shooting data"));
  lower_->setMinimumHeight(kLeastLowerPane);
  outer_->setStretchFactor(1, 1);
  center_->setStretchFactor(1, 1);
  left_->setMinimumWidth(kLeastPane);
  left_->setStretchFactor(0, 1);
  left_->setSizes({kTreeHeight, kSummaryHeight});
  controls_->setMinimumWidth(kLeastPane);
  for (auto* splitter : {outer_, center_, film_})
    connect(splitter, &QSplitter::splitterMoved, this, &Panes::TakePlaces);
}

int Panes::ColumnWidth() const {
  const bool shown = controls_->isVisibleTo(&parent_);
  return shown ? static_cast<int>(controls_->width() * controls_->devicePixelRatioF()) : 0;
}

void Panes::SetSummary(const std::string& text) {
  summary_->SetText(text);
  lower_->SetText(text);
}

/// Between picture and shooting data the strip is a pane of their splitter, else it stands beside them.
void Panes::Arrange() {
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

void Panes::Apply() {
  const auto& from = session_.settings.catalogue;
  const auto layout = LayoutOf({.mode = session_.mode,
                                .fullView = from.fullView != 0,
                                .places = Places(),
                                .width = parent_.width(),
                                .height = parent_.height(),
                                .controlsWidth = kControlsWidth,
                                .stripHeight = thumbnails_->OneLineHeight()});
  left_->setVisible(layout.tree);
  thumbnails_->setVisible(layout.list);
  film_->setVisible(layout.picture);
  lower_->setVisible(layout.lowerPane);
  controls_->setVisible(layout.controls);
  outer_->setSizes({layout.treeWidth, std::max(layout.listWidth, layout.pictureWidth), layout.controlsWidth});
  if (session_.mode == ViewMode::FilmStripBelow) {
    film_->setSizes({parent_.height() - layout.listHeight - layout.lowerHeight, layout.listHeight, layout.lowerHeight});
  } else {
    center_->setSizes({layout.listWidth, layout.pictureWidth});
    film_->setSizes({parent_.height() - layout.lowerHeight, layout.lowerHeight});
  }
}

SplitterPlaces Panes::Places() const {
  const auto& from = session_.settings.catalogue;
  return {from.splitterPos, from.filmStripSplitterPos, from.filmStripHorizontalSplitterPos};
}

void Panes::SetPlaces(const SplitterPlaces& places) {
  auto& to = session_.settings.catalogue;
  to.splitterPos = places.tree;
  to.filmStripSplitterPos = places.strip;
  to.filmStripHorizontalSplitterPos = places.lowerPane;
}

/// The user moved a splitter.
void Panes::TakePlaces() {
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

bool Panes::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) lowerBeforeDrag_ = Places().lowerPane;
  return QObject::eventFilter(watched, event);
}

void Panes::LimitPlaces() { SetPlaces(LimitedTo(Places(), parent_.width(), parent_.height())); }

void Panes::ToggleLowerPane() {
  SetPlaces(WithLowerPaneToggled(Places()));
  Apply();
}

void Panes::Open() {
  SetPlaces(WithPanesOpened(Places()));
  Apply();
}

}  // namespace ml::app
