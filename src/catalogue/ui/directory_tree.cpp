#include "catalogue/ui/directory_tree.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <string_view>
#include <utility>

#include "catalogue/ui/directory_drop.h"
#include "catalogue/ui/directory_model.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/ui/accent.h"
#include "platform/ui/volume_watcher.h"

namespace ml::catalogue::ui {
namespace {

constexpr int kIndentation = 16;
constexpr int kIconSize = 20;
constexpr int kRowHeight = 24;
constexpr int kDropOutline = 2;
/// What is left of the name of a directory deep down, in characters, before the tree scrolls sideways.
constexpr int kLeastOfName = 10;
/// Wandering through the tree by arrow keys does not load every directory on the way.
constexpr int kKeysRest = 250;

/// What of `directory` lies below `root`, without a "/" at its begin.
std::string_view Below(std::string_view directory, std::string_view root) {
  if (directory.size() <= root.size()) return {};
  directory.remove_prefix(root.size());
  while (directory.starts_with('/')) directory.remove_prefix(1);
  return directory;
}

bool LiesIn(std::string_view directory, std::string_view root) {
  return directory == root || root == "/" || (directory.starts_with(root) && directory[root.size()] == '/');
}

/// Rows that a finger or an unsteady hand can hit.
class RowDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, kRowHeight});
  }
};

}  // namespace

DirectoryTree::DirectoryTree(QWidget* parent)
    : QTreeView(parent),
      model_(new DirectoryModel(this)),
      drop_(new DirectoryDrop(*this, [this](const QModelIndex& index) { return model_->Path(index); })) {
  setAccessibleName(QStringLiteral("Directories"));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIndentation(kIndentation);
  setIconSize({kIconSize, kIconSize});
  setFrameShape(QFrame::NoFrame);
  setEditTriggers(NoEditTriggers);
  setExpandsOnDoubleClick(true);
  header()->setSectionResizeMode(QHeaderView::Fixed);
  header()->setStretchLastSection(false);
  header()->setMinimumSectionSize(0);
  setItemDelegate(new RowDelegate(this));
  setModel(model_);
  model_->SetRoots(DefaultRoots());
  connect(model_, &DirectoryModel::rowsAboutToBeInserted, this, &DirectoryTree::NoteSight);
  connect(model_, &DirectoryModel::rowsAboutToBeRemoved, this, &DirectoryTree::NoteSight);
  connect(model_, &DirectoryModel::listingChanged, this, [this] {
    if (std::exchange(wasInSight_, std::nullopt).value_or(false)) ShowCurrent();
    GoOnToTarget();
  });
  connect(this, &QTreeView::expanded, model_, &DirectoryModel::Read);
  choice_.setSingleShot(true);
  connect(&choice_, &QTimer::timeout, this, [this] {
    if (!currentIndex().isValid()) return;
    shown_ = Directory();
    Q_EMIT directoryChosen(shown_);
  });
  // A click on the current row changes nothing, but what is selected need not be what is on show.
  connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
    if (!choice_.isActive() && model_->Path(index) != shown_) choice_.start(0);
  });
  connect(drop_, &DirectoryDrop::dropped, this, &DirectoryTree::filesDropped);
  connect(new platform::ui::VolumeWatcher(this), &platform::ui::VolumeWatcher::changed, this,
          &DirectoryTree::LookAtVolumes);
}

void DirectoryTree::SetDirectory(const std::string& directory) {
  shown_ = platform::normaliseDirectory(directory);
  Select(directory);
}

void DirectoryTree::Select(const std::string& directory) {
  target_ = platform::normaliseDirectory(directory);
  choice_.stop();
  GoOnToTarget();
}

std::string DirectoryTree::Directory() const { return model_->Path(currentIndex()); }

bool DirectoryTree::IsAtRoot() const {
  const auto directory = Directory();
  for (int row = 0; row < model_->rowCount(); ++row) {
    if (model_->Path(model_->RootAt(row)) == directory) return true;
  }
  return platform::IsMountPoint(directory);
}

void DirectoryTree::SetShowHidden(bool show) {
  const std::string directory = target_.empty() ? Directory() : target_;
  const QScopedValueRollback guard(quiet_, true);
  model_->SetShowHidden(show);
  if (!directory.empty()) Select(directory);
}

void DirectoryTree::Refresh() {
  const std::string directory = target_.empty() ? Directory() : target_;
  const QScopedValueRollback guard(quiet_, true);
  model_->SetRoots(DefaultRoots());
  ReadOpen({});
  if (!directory.empty()) Select(directory);
}

void DirectoryTree::LookAtVolumes() {
  const QScopedValueRollback guard(quiet_, true);
  model_->SetRoots(DefaultRoots());
}

void DirectoryTree::ReadOpen(const QModelIndex& parent) {
  for (int row = 0; row < model_->rowCount(parent); ++row) {
    const QModelIndex child = model_->index(row, 0, parent);
    if (!isExpanded(child)) continue;
    model_->Read(child);
    ReadOpen(child);
  }
}

/// The root that is nearest: a volume before home, home before "/".
QModelIndex DirectoryTree::RootFor(const std::string& directory) const {
  QModelIndex best;
  for (int row = 0; row < model_->rowCount(); ++row) {
    const QModelIndex root = model_->RootAt(row);
    const auto path = model_->Path(root);
    if (LiesIn(directory, path) && path.size() > model_->Path(best).size()) best = root;
  }
  return best;
}

/// One level after the other; where a level was not read yet, its listing brings us back here.
void DirectoryTree::GoOnToTarget() {
  if (target_.empty()) return;
  QModelIndex at = RootFor(target_);
  while (at.isValid() && model_->Path(at) != target_) {
    if (!model_->IsListed(at)) {
      model_->Read(at);
      return;
    }
    const auto rest = Below(target_, model_->Path(at));
    at = model_->ChildNamed(at, std::string(rest.substr(0, rest.find('/'))));
    expand(at.parent());
  }
  target_.clear();
  const QScopedValueRollback guard(quiet_, true);
  setCurrentIndex(at);
  ShowCurrent();
}

/// Rows that come or go above the current one must not push it out of sight. The first change of a listing sees
/// the tree as the user does.
void DirectoryTree::NoteSight() {
  if (!wasInSight_) wasInSight_ = visualRect(currentIndex()).intersects(viewport()->rect());
}

/// Names too long for the pane are cut, their tool tips have them whole: a bar to scroll sideways comes only
/// for a current row that stands so deep that nothing of its name would be left.
void DirectoryTree::FitColumn() {
  int depth = 1;
  for (QModelIndex above = currentIndex().parent(); above.isValid(); above = above.parent()) ++depth;
  const int least = depth * indentation() + kIconSize + kLeastOfName * fontMetrics().averageCharWidth();
  header()->resizeSection(0, std::max(viewport()->width(), least));
}

void DirectoryTree::ShowCurrent() {
  FitColumn();
  executeDelayedItemsLayout();
  scrollTo(currentIndex());
  horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
}

/// The current row stays in sight, also when a scroll bar takes its place away.
void DirectoryTree::resizeEvent(QResizeEvent* event) {
  const bool inSight = visualRect(currentIndex()).intersects({QPoint(), event->oldSize()});
  QTreeView::resizeEvent(event);
  inSight ? ShowCurrent() : FitColumn();
}

void DirectoryTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem row = option;
  if (!hasFocus()) {
    // The accent belongs to where the keys go.
    const int grey = qGray(palette().color(QPalette::Highlight).rgb());
    row.palette.setColor(QPalette::Highlight, {grey, grey, grey});
  }
  QTreeView::drawRow(painter, row, index);
  if (index != drop_->Target()) return;
  painter->save();
  painter->setPen({platform::ui::AccentFor(palette().color(QPalette::Base)), kDropOutline});
  painter->drawRect(row.rect.adjusted(1, 1, -kDropOutline, -kDropOutline));
  painter->restore();
}

void DirectoryTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  FitColumn();
  if (quiet_ || !current.isValid()) return;
  target_.clear();
  choice_.start(byKey_ ? kKeysRest : 0);
}

/// The toolkit would move on to a neighbour when the current directory is gone; nobody chose that one.
void DirectoryTree::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) {
  QModelIndex beside = currentIndex();
  while (beside.isValid() && beside.parent() != parent) beside = beside.parent();
  const bool currentGoes = beside.isValid() && beside.row() >= start && beside.row() <= end;
  const QScopedValueRollback guard(quiet_, true);
  QTreeView::rowsAboutToBeRemoved(parent, start, end);
  if (currentGoes) selectionModel()->clear();
}

/// A view without a current row takes its first one when it gets the focus.
void DirectoryTree::focusInEvent(QFocusEvent* event) {
  const QScopedValueRollback guard(quiet_, true);
  QTreeView::focusInEvent(event);
}

void DirectoryTree::keyPressEvent(QKeyEvent* event) {
  const QScopedValueRollback guard(byKey_, true);
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid()) {
    choice_.start(0);
    return;
  }
  QTreeView::keyPressEvent(event);
}

void DirectoryTree::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const QPoint row = viewport()->mapToGlobal(visualRect(currentIndex()).center());
  Q_EMIT contextMenuWanted(byKey && currentIndex().isValid() ? row : event->globalPos());
}

}  // namespace ml::catalogue::ui
