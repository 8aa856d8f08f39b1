#include "batch/ui/rename_list_model.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "batch/ui/messages.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

using platform::ui::ToLabel;

const std::string& TextOf(const RenameRow& row, int column) {
  if (column == RenameListModel::kOldName) return row.oldName;
  return column == RenameListModel::kNewName ? row.newName : row.remark;
}

/// What a screen reader says of the line.
QString SpokenText(const RenameRow& row) {
  auto text = ToLabel(row.oldName) + QStringLiteral(", ") + ToLabel(row.newName);
  return row.remark.empty() ? text : text + QStringLiteral(", ") + ToLabel(row.remark);
}

}  // namespace

void RenameListModel::SetRows(std::vector<RenameRow> rows) {
  if (rows == rows_) return;
  if (rows.size() != rows_.size()) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    return;
  }
  rows_ = std::move(rows);
  Q_EMIT dataChanged(index(0, 0), index(static_cast<int>(rows_.size()) - 1, kColumns - 1));
}

int RenameListModel::NextProblem(int row) const {
  const auto count = static_cast<int>(rows_.size());
  for (int step = 1; step <= count; ++step) {
    const int next = (row + step) % count;
    if (!rows_[static_cast<std::size_t>(next)].problem.empty()) return next;
  }
  return -1;
}

int RenameListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RenameListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QVariant RenameListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const auto& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return ToLabel(TextOf(row, index.column()));
    case Qt::DecorationRole:
      return index.column() == kRemark && !row.problem.empty() ? QVariant(warning_) : QVariant();
    case Qt::ToolTipRole:
      return platform::ui::PlainToolTip(
          platform::ui::ToQString(row.problem.empty() ? TextOf(row, index.column()) : row.problem));
    case Qt::AccessibleTextRole:
      return SpokenText(row);
    default:
      return {};
  }
}

QVariant RenameListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  constexpr std::array kTitles = {kOldNameTitle, kNewNameTitle, kRemarkTitle};
  if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  if (role == Qt::DisplayRole) return QString::fromLatin1(kTitles[static_cast<std::size_t>(section)]);
  return {};
}

}  // namespace ml::batch::ui
