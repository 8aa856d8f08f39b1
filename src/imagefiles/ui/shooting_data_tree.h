#pragma once

#include <QString>
#include <QTreeWidget>
#include <compare>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "metadata/shooting_rows.h"

namespace ml::imagefiles::ui {

/// Names and values in groups that fold. What is folded, selected and scrolled to stays when another image comes, so
/// that its values stand where those of the last one stood.
class ShootingDataTree final : public QTreeWidget {
  Q_OBJECT

 public:
  explicit ShootingDataTree(QWidget* parent);

  void SetGroups(std::vector<metadata::ShootingRows> groups);
  /// Leaves only rows that hold every word of `text` in heading, name or value; all of them for an empty text.
  void SetFilter(const QString& text);
  /// What stands in place of rows where there are none.
  void SetEmptyText(const QString& text);
  /// For the clipboard: the rows selected, or all that show where none is; a heading stands for its group.
  std::string TextToCopy() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// A row of any image: its name, and which of that name it is. A heading has no name and is number -1.
  struct RowKey {
    metadata::ShootingGroup group;
    std::string name;
    std::ptrdiff_t number;
    auto operator<=>(const RowKey&) const = default;
  };

  void Rebuild();
  void AddGroup(const metadata::ShootingRows& group);
  bool Matches(const metadata::ShootingRows& group, const metadata::ShootingRow& row) const;
  RowKey KeyOf(QTreeWidgetItem& item) const;
  void KeepFolded(QTreeWidgetItem& item, bool folded);
  void KeepMarks();
  void RestoreMarks();

  std::vector<metadata::ShootingRows> groups_, shown_;
  std::set<metadata::ShootingGroup> folded_;
  std::set<RowKey> selected_;
  std::optional<RowKey> current_;
  int scrolledTo_ = 0;
  QStringList words_;
  QString emptyText_;
};

}  // namespace ml::imagefiles::ui
