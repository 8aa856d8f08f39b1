#pragma once

#include <QItemSelection>
#include <QObject>

#include "catalogue/image_list.h"

class QItemSelectionModel;

namespace ml::catalogue::ui {

/// Keeps the selection and the focus of a view and those of the catalogue in step, both ways. The list and
/// the selection model outlive it.
class SelectionLink final : public QObject {
  Q_OBJECT

 public:
  SelectionLink(ImageList& list, QItemSelectionModel& selection, QObject* parent);

  /// The catalogue's marks and focus go into the view; nothing is signalled.
  void FromList();

 Q_SIGNALS:
  /// The user changed the selection; the marks of the list are up to date.
  void selectionEdited();
  /// The user moved the focus; -1 if none.
  void focusMoved(int index);

 private:
  void TakeSelection(const QItemSelection& selected, const QItemSelection& deselected);
  void TakeFocus(const QModelIndex& current);
  void Mark(const QItemSelection& ranges, bool on);

  ImageList& list_;
  QItemSelectionModel& selection_;
  bool fromList_ = false;
};

}  // namespace ml::catalogue::ui
