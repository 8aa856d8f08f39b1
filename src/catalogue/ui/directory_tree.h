#pragma once

#include <QTimer>
#include <QTreeView>
#include <optional>
#include <string>
#include <vector>

namespace ml::catalogue::ui {

class DirectoryDrop;
class DirectoryModel;
struct DroppedFiles;

/// The directories of the machine: home, "/" and the mounted volumes, read as they are opened. Volumes come and go by
/// themselves.
class DirectoryTree final : public QTreeView {
  Q_OBJECT

 public:
  explicit DirectoryTree(QWidget* parent = nullptr);

  /// Opens the tree down to `directory` (full path) and selects it, without a signal; it takes effect as the
  /// levels above are read. A later choice of the user wins.
  void SetDirectory(const std::string& directory);
  /// The same for a directory that is selected only, not on show: a click on it chooses it.
  void Select(const std::string& directory);
  /// The selected directory; empty if there is none.
  std::string Directory() const;
  /// Whether that is one of the roots, home, "/" and the volumes of the user, or the top of any other file system.
  bool IsAtRoot() const;
  /// "ShowHiddenDirectories"
  void SetShowHidden(bool show);
  /// Looks again at the mounted volumes and at what is open.
  void Refresh();

 Q_SIGNALS:
  /// By mouse, or by keyboard once the keys rest.
  void directoryChosen(const std::string& directory);
  void contextMenuWanted(const QPoint& globalPosition);
  void filesDropped(const ml::catalogue::ui::DroppedFiles& files);

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void GoOnToTarget();
  void FitColumn();
  void ShowCurrent();
  void NoteSight();
  QModelIndex RootFor(const std::string& directory) const;
  void ReadOpen(const QModelIndex& parent);

  void LookAtVolumes();

  DirectoryModel* model_;
  DirectoryDrop* drop_;
  std::string shown_;               ///< what is on show, as far as the tree was told
  std::string target_;              ///< where SetDirectory is on its way to; empty when arrived
  QTimer choice_;                   ///< runs between a choice and its signal
  std::optional<bool> wasInSight_;  ///< the current row, while a listing changes the tree
  bool byKey_ = false;
  bool quiet_ = false;  ///< the current row moves without being chosen
};

}  // namespace ml::catalogue::ui
