#include "catalogue/ui/thumbnail_list_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyleHints>
#include <algorithm>
#include <array>
#include <cmath>

#include "catalogue/ui/selection_link.h"
#include "catalogue/ui/thumbnail_delegate.h"
#include "catalogue/ui/thumbnail_drag.h"
#include "catalogue/ui/thumbnail_model.h"
#include "platform/ui/path_drop_target.h"

namespace ml::catalogue::ui {
namespace {

/// Where the topmost item is looked for, in this order.
constexpr std::array kTopProbes = {QPoint(5, 5), QPoint(15, 35), QPoint(30, 15)};
constexpr int kEmptyTextMargin = 16;

bool IsTyped(const QKeyEvent& event) {
  const bool plain = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
  return plain && !event.text().isEmpty() && event.text().at(0).isPrint();
}

}  // namespace

ThumbnailListView::ThumbnailListView(ImageList& list, CThumbnailThread& worker, QWidget* parent)
    : QListView(parent),
      list_(list),
      worker_(worker),
      model_(new ThumbnailModel(list, worker, this)),
      delegate_(new ThumbnailDelegate(*model_, this)) {
  setAccessibleName(QStringLiteral("Thumbnails"));
  setViewMode(IconMode);
  setMovement(Static);
  setResizeMode(Adjust);
  setUniformItemSizes(true);
  setSelectionMode(ExtendedSelection);
  setSelectionRectVisible(true);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  setFrameShape(QFrame::NoFrame);
  setItemDelegate(delegate_);
  setModel(model_);
  SetArrangement(Arrangement::Rows);
  SetColours("gray");
  ApplyGeometry(delegate_->Geometry().thumbnailSize);

  link_ = new SelectionLink(list_, *selectionModel(), this);
  connect(link_, &SelectionLink::selectionEdited, this, &ThumbnailListView::selectionEdited);
  connect(link_, &SelectionLink::focusMoved, this, &ThumbnailListView::focusMoved);
  connect(this, &QListView::doubleClicked, this, [this](const QModelIndex& i) { Q_EMIT imageActivated(i.row()); });
  auto* drops = new platform::ui::PathDropTarget(viewport());
  connect(drops, &platform::ui::PathDropTarget::pathsDropped, this, &ThumbnailListView::pathsDropped);
  drag_ = new ThumbnailDrag(*this, list_);
  connect(drag_, &ThumbnailDrag::moveWanted, this, &ThumbnailListView::moveWanted);
}

void ThumbnailListView::ListReplaced() {
  model_->ListChanged();
  link_->FromList();
  const int shown = list_.focusIndex >= 0 ? list_.focusIndex : list_.currentIndex;
  if (list_.ValidIndex(shown)) {
    ScrollTo(shown);
  } else {
    scrollToTop();
  }
  LookAtTop();
}

void ThumbnailListView::ListReordered() {
  const std::string top = topPath_;
  const bool focusInSight = currentIndex().isValid() && visualRect(currentIndex()).intersects(viewport()->rect());
  model_->ListChanged();
  link_->FromList();
  ScrollTo(list_.IndexOfPath(top), PositionAtTop);
  if (focusInSight) ScrollTo(list_.focusIndex, EnsureVisible);
  LookAtTop();
}

void ThumbnailListView::MarksChanged() {
  link_->FromList();
  viewport()->update();
}

void ThumbnailListView::ItemReady(int index) {
  if (!isVisible()) return;
  update(IndexOf(index));
  LookAtTop();
}

void ThumbnailListView::SetThumbnailSize(int size) {
  const int top = TopVisibleIndex();
  const bool inSight = FocusInSight();
  ApplyGeometry(size);
  ScrollTo(top, PositionAtTop);
  if (inSight) ScrollTo(list_.focusIndex);
}

int ThumbnailListView::ThumbnailPixels() const {
  return static_cast<int>(std::lround(delegate_->Geometry().thumbnailSize * devicePixelRatioF()));
}

void ThumbnailListView::SetColours(std::string_view name) {
  const auto& colours = SchemeColours(name);
  delegate_->SetColours(colours);
  QPalette own = viewport()->palette();
  own.setColor(QPalette::Base, colours.backgroundColour);
  own.setColor(QPalette::Text, colours.defaultTextColour);
  viewport()->setPalette(own);
}

void ThumbnailListView::SetTagOutline(int width) {
  delegate_->SetTagOutline(width);
  viewport()->update();
}

void ThumbnailListView::SetBlackAndWhite(bool on) {
  delegate_->SetBlackAndWhite(on);
  viewport()->update();
}

void ThumbnailListView::SetArrangement(Arrangement arrangement) {
  const bool rows = arrangement == Arrangement::Rows;
  setVerticalScrollBarPolicy(rows ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(rows ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
  setFlow(rows ? LeftToRight : TopToBottom);
  setWrapping(true);
}

void ThumbnailListView::SetEmptyText(const QString& text) {
  emptyText_ = text;
  setAccessibleDescription(list_.Empty() ? text : QString());
  viewport()->update();
}

void ThumbnailListView::SetDescriber(std::function<std::string(const std::string& path)> describe) {
  model_->SetDescriber(std::move(describe));
}

int ThumbnailListView::OneLineHeight() const {
  return gridSize().height() + horizontalScrollBar()->sizeHint().height();
}

int ThumbnailListView::OneColumnWidth() const { return gridSize().width() + verticalScrollBar()->sizeHint().width(); }

void ThumbnailListView::SetFocus(int index) {
  list_.focusIndex = list_.ValidIndex(index) ? index : -1;
  MarksChanged();
  ScrollTo(index);
}

void ThumbnailListView::ScrollTo(int index, ScrollHint hint) {
  const QModelIndex target = IndexOf(index);
  if (!target.isValid()) return;
  executeDelayedItemsLayout();
  scrollTo(target, hint);
}

int ThumbnailListView::TopVisibleIndex() const {
  for (const QPoint& probe : kTopProbes) {
    const QModelIndex hit = indexAt(probe);
    if (hit.isValid()) return hit.row();
  }
  return -1;
}

/// In the middle of a typed name, digits and blanks belong to the name, not to the commands they stand for.
bool ThumbnailListView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsTypingAhead() && IsTyped(static_cast<QKeyEvent&>(*event))) {
    event->accept();
    return true;
  }
  return QListView::event(event);
}

void ThumbnailListView::keyPressEvent(QKeyEvent* event) {
  const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
  const int key = event->key();
  if (IsTyped(*event) && (key != Qt::Key_Space || IsTypingAhead())) {
    TypeAhead(event->text());
  } else if ((plain && key == Qt::Key_Space) || (event->modifiers() == Qt::ControlModifier && key == Qt::Key_T)) {
    Q_EMIT tagToggled();
  } else if (plain && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    if (currentIndex().isValid()) Q_EMIT imageActivated(currentIndex().row());
  } else {
    QListView::keyPressEvent(event);
    return;
  }
  event->accept();
}

/// Coming into the list does not give the focus to an item: the first key does.
void ThumbnailListView::focusInEvent(QFocusEvent* event) {
  const QScopedValueRollback guard(takingFocus_, true);
  QListView::focusInEvent(event);
}

void ThumbnailListView::paintEvent(QPaintEvent* event) {
  WatchPixelRatio();
  if (model_->rowCount() == 0) {
    PaintEmpty();
  } else {
    QListView::paintEvent(event);
    QPainter painter(viewport());
    drag_->PaintMark(painter);
  }
}

/// The focused image stays in sight, or comes there with the first room: the toolkit lays out later, when nobody knows
/// any more what was to be seen.
void ThumbnailListView::resizeEvent(QResizeEvent* event) {
  const QRect before({}, event->oldSize());
  const bool inSight = before.isEmpty() || visualRect(currentIndex()).intersects(before);
  QListView::resizeEvent(event);
  if (inSight) ScrollTo(currentIndex().row());
  LookAtTop();
}

void ThumbnailListView::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const QRect focused = visualRect(currentIndex()).intersected(viewport()->rect());
  Q_EMIT contextMenuWanted(byKey && !focused.isEmpty() ? viewport()->mapToGlobal(focused.center())
                                                       : event->globalPos());
}

void ThumbnailListView::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    SetThumbnailSize(delegate_->Geometry().thumbnailSize);
  }
}

void ThumbnailListView::scrollContentsBy(int dx, int dy) {
  QListView::scrollContentsBy(dx, dy);
  if (isVisible()) LookAtTop();
}

void ThumbnailListView::startDrag(Qt::DropActions) { drag_->Start(); }

/// What the key means in a list that runs in rows, or turned by a quarter in one of columns.
std::optional<GridMove> ThumbnailListView::MoveOf(CursorAction action, bool columns) {
  switch (action) {
    case MoveLeft:
      return columns ? GridMove::Up : GridMove::Left;
    case MoveRight:
      return columns ? GridMove::Down : GridMove::Right;
    case MoveUp:
      return columns ? GridMove::Left : GridMove::Up;
    case MoveDown:
      return columns ? GridMove::Right : GridMove::Down;
    case MovePrevious:
      return GridMove::Left;
    case MoveNext:
      return GridMove::Right;
    case MovePageUp:
      return GridMove::PageUp;
    case MovePageDown:
      return GridMove::PageDown;
    case MoveHome:
      return GridMove::Home;
    case MoveEnd:
      return GridMove::End;
  }
  return std::nullopt;
}

QModelIndex ThumbnailListView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const bool columns = flow() == TopToBottom;
  const auto move = MoveOf(action, columns);
  if (takingFocus_ || !move) return {};
  executeDelayedItemsLayout();
  const int inSight = columns ? viewport()->width() / gridSize().width() : viewport()->height() / gridSize().height();
  return IndexOf(GridNeighbour(*move, currentIndex().row(),
                               {.count = model_->rowCount(), .line = ItemsInLine(), .page = std::max(1, inSight)}));
}

bool ThumbnailListView::FocusInSight() const { return visualRect(currentIndex()).intersects(viewport()->rect()); }

QModelIndex ThumbnailListView::IndexOf(int row) const { return model_->index(row, 0); }

/// The layout is asked, not computed a second time: it knows about scroll bars.
int ThumbnailListView::ItemsInLine() const {
  const bool columns = flow() == TopToBottom;
  const auto place = [&](int row) {
    return columns ? visualRect(IndexOf(row)).left() : visualRect(IndexOf(row)).top();
  };
  const int count = model_->rowCount();
  int row = 1;
  while (row < count && place(row) == place(0)) ++row;
  return row;
}

bool ThumbnailListView::IsTypingAhead() const {
  return lastTyped_.isValid() && lastTyped_.elapsed() < QApplication::keyboardInputInterval();
}

void ThumbnailListView::TypeAhead(const QString& text) {
  lastTyped_.restart();
  keyboardSearch(text);
}

void ThumbnailListView::ApplyGeometry(int size) {
  delegate_->SetGeometry({.thumbnailSize = size, .lineHeight = QFontMetrics(font()).height()});
  const QSize cell = delegate_->Geometry().CellSize();
  setGridSize(cell);
  // A notch of the wheel is three steps: one line.
  verticalScrollBar()->setSingleStep(std::max(1, cell.height() / 3));
  horizontalScrollBar()->setSingleStep(std::max(1, cell.width() / 3));
}

void ThumbnailListView::LookAtTop() {
  const int top = TopVisibleIndex();
  if (!model_->Has(top) || top < 0) return;
  topPath_ = model_->Path(top);
  worker_.JumpTo(top);
}

void ThumbnailListView::PaintEmpty() {
  QPainter painter(viewport());
  painter.setPen(viewport()->palette().color(QPalette::Text));
  const QRect area =
      viewport()->rect().marginsRemoved({kEmptyTextMargin, kEmptyTextMargin, kEmptyTextMargin, kEmptyTextMargin});
  painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

/// Qt 6.4 tells a window, but not a widget, that its scale changed.
void ThumbnailListView::WatchPixelRatio() {
  if (pixelRatio_ == devicePixelRatioF()) return;
  const bool first = pixelRatio_ == 0;
  pixelRatio_ = devicePixelRatioF();
  if (!first) QMetaObject::invokeMethod(this, &ThumbnailListView::pixelRatioChanged, Qt::QueuedConnection);
}

}  // namespace ml::catalogue::ui
