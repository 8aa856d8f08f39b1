#include "catalogue/ui/selection_link.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>

namespace ml::catalogue::ui {
namespace {

QItemSelection SelectedRanges(const ImageList& list, const QAbstractItemModel& model) {
  QItemSelection ranges;
  const int count = std::min(list.Count(), model.rowCount());
  const auto selected = [&](int row) { return list.marks[static_cast<std::size_t>(row)].selected; };
  for (int row = 0; row < count; ++row) {
    if (!selected(row)) continue;
    const int first = row;
    while (row + 1 < count && selected(row + 1)) ++row;
    ranges.append(QItemSelectionRange(model.index(first, 0), model.index(row, 0)));
  }
  return ranges;
}

}  // namespace

SelectionLink::SelectionLink(ImageList& list, QItemSelectionModel& selection, QObject* parent)
    : QObject(parent), list_(list), selection_(selection) {
  connect(&selection, &QItemSelectionModel::selectionChanged, this, &SelectionLink::TakeSelection);
  connect(&selection, &QItemSelectionModel::currentChanged, this, &SelectionLink::TakeFocus);
}

void SelectionLink::FromList() {
  const QScopedValueRollback guard(fromList_, true);
  const auto& model = *selection_.model();
  selection_.select(SelectedRanges(list_, model), QItemSelectionModel::ClearAndSelect);
  const QModelIndex focus = model.index(list_.focusIndex, 0);
  if (focus.isValid()) {
    selection_.setCurrentIndex(focus, QItemSelectionModel::NoUpdate);
  } else {
    selection_.clearCurrentIndex();
  }
}

void SelectionLink::TakeSelection(const QItemSelection& selected, const QItemSelection& deselected) {
  if (fromList_) return;
  Mark(deselected, false);
  Mark(selected, true);
  Q_EMIT selectionEdited();
}

void SelectionLink::TakeFocus(const QModelIndex& current) {
  if (fromList_) return;
  list_.focusIndex = list_.ValidIndex(current.row()) ? current.row() : -1;
  Q_EMIT focusMoved(list_.focusIndex);
}

void SelectionLink::Mark(const QItemSelection& ranges, bool on) {
  for (const auto& range : ranges) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      if (list_.ValidIndex(row)) list_.marks[static_cast<std::size_t>(row)].selected = on;
    }
  }
}

}  // namespace ml::catalogue::ui
