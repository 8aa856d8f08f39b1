#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <string>
#include <vector>

namespace ml::batch::ui {

/// One image of the list. Texts are bytes.
struct RenameRow {
  std::string oldName, newName;
  std::string remark;   ///< in a few words what is wrong, or that the name stays; empty for most
  std::string problem;  ///< the whole sentence; empty if nothing is wrong
  friend bool operator==(const RenameRow&, const RenameRow&) = default;
};

/// Old name, new name and what is wrong with it, a line each; what is wrong bears a sign beside its words.
class RenameListModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr int kOldName = 0, kNewName = 1, kRemark = 2, kColumns = 3;

  /// `warning` stands beside a problem.
  RenameListModel(const QIcon& warning, QObject* parent) : QAbstractTableModel(parent), warning_(warning) {}

  /// Rows that stay the same many keep what is selected.
  void SetRows(std::vector<RenameRow> rows);
  const std::vector<RenameRow>& Rows() const { return rows_; }
  /// The first row with a problem behind `row`, from the top again behind the last; -1 if there is none.
  int NextProblem(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QIcon warning_;
  std::vector<RenameRow> rows_;
};

}  // namespace ml::batch::ui
