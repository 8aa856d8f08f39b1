#include "imagefiles/ui/shooting_data_window.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "imagefiles/ui/shooting_data_tree.h"
#include "platform/ui/qt_text.h"

namespace ml::imagefiles::ui {
namespace {

constexpr int kMargin = 8;
constexpr QSize kSmallestSize{240, 180};

/// The keys of this window; all others are those of the window behind it, which go on to work.
bool IsOwnKey(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Space:
      return key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::ShiftModifier;
    default:
      return key.matches(QKeySequence::Copy) || key.matches(QKeySequence::SelectAll) || key.matches(QKeySequence::Find);
  }
}

}  // namespace

ShootingDataWindow::ShootingDataWindow(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      filter_(new QLineEdit(this)),
      tree_(new ShootingDataTree(this)),
      copy_(new QPushButton(QStringLiteral("&Copy"), this)) {
  setObjectName(QStringLiteral("ShootingDataWindow"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  setMinimumSize(kSmallestSize);
  filter_->setPlaceholderText(QStringLiteral("Search shooting data"));
  filter_->setAccessibleName(QStringLiteral("Search shooting data"));
  filter_->setToolTip(QStringLiteral("Shows only what holds these words (Ctrl+F)"));
  filter_->setClearButtonEnabled(true);
  copy_->setToolTip(QStringLiteral("Copy the rows selected, or all of them (Ctrl+C)"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  auto* line = new QHBoxLayout;
  line->addWidget(filter_, 1);
  line->addWidget(copy_);
  layout->addLayout(line);
  layout->addWidget(tree_, 1);
  tree_->setFocus();
  for (QObject* pane : {static_cast<QObject*>(tree_), static_cast<QObject*>(filter_)}) pane->installEventFilter(this);
  connect(filter_, &QLineEdit::textChanged, tree_, &ShootingDataTree::SetFilter);
  connect(copy_, &QPushButton::clicked, this, &ShootingDataWindow::Copy);
  ShowImage(QString(), {});
}

void ShootingDataWindow::SetName(const QString& name) {
  const auto title = QStringLiteral("Shooting Data");
  setWindowTitle(name.isEmpty() ? title : name + QStringLiteral(" - ") + title);
}

void ShootingDataWindow::ShowImage(const QString& name, std::vector<metadata::ShootingRows> groups) {
  SetName(name);
  copy_->setEnabled(!groups.empty());
  tree_->SetEmptyText(name.isEmpty() ? QStringLiteral("No image") : QStringLiteral("Nothing known"));
  tree_->SetGroups(std::move(groups));
}

void ShootingDataWindow::Await(const QString& name) {
  SetName(name);
  copy_->setEnabled(false);
  tree_->SetEmptyText(QString());
  tree_->SetGroups({});
}

void ShootingDataWindow::Activate() {
  raise();
  activateWindow();
  tree_->setFocus();
}

void ShootingDataWindow::Copy() {
  if (copy_->isEnabled()) QGuiApplication::clipboard()->setText(QString::fromStdString(tree_->TextToCopy()));
}

bool ShootingDataWindow::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsOwnKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

/// Both panes have a copying of their own, of one cell and of nothing.
bool ShootingDataWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const bool copies = static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy);
  if (!copies || (watched == filter_ && filter_->hasSelectedText())) return false;
  Copy();
  return true;
}

void ShootingDataWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Find)) {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
  } else if (event->matches(QKeySequence::Copy)) {
    Copy();
  } else if (event->key() == Qt::Key_Down && filter_->hasFocus()) {
    tree_->setFocus(Qt::ShortcutFocusReason);
  } else if (event->key() != Qt::Key_Escape) {
    QWidget::keyPressEvent(event);
  } else if (filter_->hasFocus() && !filter_->text().isEmpty()) {
    filter_->clear();
  } else {
    close();
  }
}

void ShootingDataWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (isVisible()) Q_EMIT placed();
}

void ShootingDataWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isVisible()) Q_EMIT placed();
}

void ShootingDataWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  Q_EMIT closed();
}

}  // namespace ml::imagefiles::ui
