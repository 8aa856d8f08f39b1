#include "imagefiles/ui/shooting_data_tree.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/ui/qt_text.h"

namespace ml::imagefiles::ui {
namespace {

using metadata::ShootingGroup;
using metadata::ShootingRow;
using metadata::ShootingRows;
using platform::ui::ToQString;

constexpr int kName = 0, kValue = 1;
constexpr int kRowHeight = 24;
constexpr int kRoomAboveText = 4;
constexpr int kMargin = 8;
/// A value may be a whole article; all of it is copied.
constexpr qsizetype kLongestShown = 4000;
constexpr QLatin1String kWidestName("Flash exposure compensation");

std::string_view HeadingOf(ShootingGroup group) {
  return metadata::kShootingGroups.at(static_cast<std::size_t>(group));
}

QString ShownValue(const std::string& value) {
  const auto text = ToQString(value);
  return text.size() <= kLongestShown ? text : text.left(kLongestShown) + QChar(0x2026);
}

/// Rows as high as their values need in the width there is, with some room around the text; a tree by itself reckons
/// without either.
class WrappingDelegate final : public QStyledItemDelegate {
 public:
  explicit WrappingDelegate(QTreeView& tree) : QStyledItemDelegate(&tree), tree_(tree) {}
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem wide = option;
    if (index.column() == kValue) wide.rect = QRect(0, 0, tree_.columnWidth(kValue), QWIDGETSIZE_MAX);
    const auto size = QStyledItemDelegate::sizeHint(wide, index);
    return {size.width(), std::max(size.height() + 2 * kRoomAboveText, kRowHeight)};
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem inner = option;
    initStyleOption(&inner, index);
    tree_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &inner, painter, &tree_);
    inner = option;
    inner.rect.adjust(0, kRoomAboveText, 0, -kRoomAboveText);
    QStyledItemDelegate::paint(painter, inner, index);
  }

 private:
  QTreeView& tree_;
};

}  // namespace

ShootingDataTree::ShootingDataTree(QWidget* parent) : QTreeWidget(parent) {
  setAccessibleName(QStringLiteral("Shooting data"));
  setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Value")});
  setItemDelegate(new WrappingDelegate(*this));
  setSelectionMode(ExtendedSelection);
  setWordWrap(true);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setIndentation(kMargin * 2);
  setFont(platform::ui::WithTabularFigures(font()));
  header()->setSectionsMovable(false);
  header()->resizeSection(kName, fontMetrics().horizontalAdvance(kWidestName) + indentation() + 2 * kMargin);
  connect(header(), &QHeaderView::sectionResized, this, [this] { scheduleDelayedItemsLayout(); });
  connect(this, &QTreeWidget::itemCollapsed, this, [this](auto* item) { KeepFolded(*item, true); });
  connect(this, &QTreeWidget::itemExpanded, this, [this](auto* item) { KeepFolded(*item, false); });
}

void ShootingDataTree::SetGroups(std::vector<ShootingRows> groups) {
  if (groups == groups_) return;
  groups_ = std::move(groups);
  Rebuild();
}

void ShootingDataTree::SetFilter(const QString& text) {
  words_ = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  Rebuild();
}

void ShootingDataTree::SetEmptyText(const QString& text) {
  emptyText_ = text;
  viewport()->update();
}

/// While rows are searched, those found show whatever is folded.
void ShootingDataTree::KeepFolded(QTreeWidgetItem& item, bool folded) {
  if (!words_.isEmpty() || item.parent() != nullptr) return;
  const auto group = KeyOf(item).group;
  folded ? static_cast<void>(folded_.insert(group)) : static_cast<void>(folded_.erase(group));
}

bool ShootingDataTree::Matches(const ShootingRows& group, const ShootingRow& row) const {
  if (words_.isEmpty()) return true;
  const auto text = ToQString(HeadingOf(group.group)) + QLatin1Char('\n') + ToQString(row.name) + QLatin1Char('\n') +
                    ToQString(row.value);
  return std::ranges::all_of(words_, [&](const auto& word) { return text.contains(word, Qt::CaseInsensitive); });
}

ShootingDataTree::RowKey ShootingDataTree::KeyOf(QTreeWidgetItem& item) const {
  auto* heading = item.parent() != nullptr ? item.parent() : &item;
  const auto& group = shown_.at(static_cast<std::size_t>(indexOfTopLevelItem(heading)));
  if (heading == &item) return {group.group, {}, -1};
  const auto row = group.rows.begin() + heading->indexOfChild(&item);
  return {group.group, row->name,
          std::count_if(group.rows.begin(), row, [&](const auto& other) { return other.name == row->name; })};
}

/// Those of the last image that had rows.
void ShootingDataTree::KeepMarks() {
  if (topLevelItemCount() == 0) return;
  selected_.clear();
  for (auto* item : selectedItems()) selected_.insert(KeyOf(*item));
  current_.reset();
  if (currentItem() != nullptr) current_ = KeyOf(*currentItem());
  scrolledTo_ = verticalScrollBar()->value();
}

void ShootingDataTree::Rebuild() {
  KeepMarks();
  const QSignalBlocker quiet(this);
  clear();
  shown_.clear();
  for (const auto& group : groups_) AddGroup(group);
  RestoreMarks();
  viewport()->update();
}

void ShootingDataTree::AddGroup(const ShootingRows& group) {
  ShootingRows shown{group.group, {}};
  std::ranges::copy_if(group.rows, std::back_inserter(shown.rows),
                       [&](const auto& row) { return Matches(group, row); });
  if (shown.rows.empty()) return;
  auto* heading = new QTreeWidgetItem(this, {ToQString(HeadingOf(group.group))});
  auto bold = font();
  bold.setBold(true);
  heading->setFont(kName, bold);
  heading->setFirstColumnSpanned(true);
  for (const auto& row : shown.rows) {
    auto* item = new QTreeWidgetItem(heading, {ToQString(row.name), ShownValue(row.value)});
    item->setTextAlignment(kName, Qt::AlignLeft | Qt::AlignTop);
    item->setTextAlignment(kValue, Qt::AlignLeft | Qt::AlignTop);
    item->setToolTip(kName, platform::ui::PlainToolTip(item->text(kName)));
  }
  heading->setExpanded(!words_.isEmpty() || !folded_.contains(group.group));
  shown_.push_back(std::move(shown));
}

void ShootingDataTree::RestoreMarks() {
  for (QTreeWidgetItemIterator place(this); *place != nullptr; ++place) {
    const auto key = KeyOf(**place);
    if (current_ == key) setCurrentItem(*place, kName, QItemSelectionModel::NoUpdate);
    if (selected_.contains(key)) (*place)->setSelected(true);
  }
  doItemsLayout();
  verticalScrollBar()->setValue(scrolledTo_);
}

std::string ShootingDataTree::TextToCopy() const {
  if (selectedItems().isEmpty()) return ListText(shown_);
  std::vector<ShootingRows> chosen;
  bool headings = false;
  for (int g = 0; g < topLevelItemCount(); ++g) {
    const auto& heading = *topLevelItem(g);
    const auto& group = shown_.at(static_cast<std::size_t>(g));
    headings = headings || heading.isSelected();
    ShootingRows rows{group.group, {}};
    for (int r = 0; r < heading.childCount(); ++r) {
      if (heading.isSelected() || heading.child(r)->isSelected()) {
        rows.rows.push_back(group.rows.at(static_cast<std::size_t>(r)));
      }
    }
    if (!rows.rows.empty()) chosen.push_back(std::move(rows));
  }
  if (headings) return ListText(chosen);
  std::string text;
  for (const auto& group : chosen) {
    for (const auto& row : group.rows) text.append(text.empty() ? "" : "\n").append(RowText(row));
  }
  return text;
}

void ShootingDataTree::paintEvent(QPaintEvent* event) {
  QTreeWidget::paintEvent(event);
  if (topLevelItemCount() > 0) return;
  const bool searching = !words_.isEmpty() && !groups_.empty();
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap,
                   searching ? QStringLiteral("Nothing found") : emptyText_);
}

}  // namespace ml::imagefiles::ui
