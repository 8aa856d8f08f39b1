#pragma once

#include <QWidget>

#include "batch/new_names.h"

class QLabel;
class QPushButton;
class QTableView;

namespace ml::batch::ui {

class RenameListModel;

/// The names before and after with what is wrong with them, under a line that sums it up and leads to the problems.
class RenameListPane final : public QWidget {
  Q_OBJECT

 public:
  explicit RenameListPane(QWidget* parent);

  /// Keeps a copy, from which rows are copied as text.
  void Show(const NewNames& names);
  /// What the line says of names that cannot be; empty if there are none.
  QString ProblemText() const;
  /// Selects the first row that has one; nothing happens if none has.
  void GoToFirstProblem();

 private:
  void MakeList();
  QWidget* MakeSummary();
  void ShowSummary();
  void GoToNextProblem();
  void CopyList();

  NewNames names_;
  RenameListModel* model_ = nullptr;
  QTableView* list_ = nullptr;
  QLabel *sign_ = nullptr, *summary_ = nullptr;
  QPushButton* nextProblem_ = nullptr;
};

}  // namespace ml::batch::ui
