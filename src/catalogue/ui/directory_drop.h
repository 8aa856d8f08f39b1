#pragma once

#include <QBasicTimer>
#include <QPersistentModelIndex>
#include <QTreeView>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/transfer_files.h"

class QDropEvent;

namespace ml::catalogue::ui {

/// Files that were dropped onto a directory.
struct DroppedFiles {
  std::vector<std::string> paths;  ///< full, at least one
  std::string directory;
  std::optional<TransferKind> kind;  ///< as the modifier keys want it; nothing: the user is to be asked
  QPoint position;                   ///< of the pointer on the screen
};

/// Lets the rows of a tree of directories take files, from our own list and from other programs. While something is
/// dragged over a branch it opens after a while, and at the edges the tree scrolls. The view outlives it.
class DirectoryDrop final : public QObject {
  Q_OBJECT

 public:
  using PathOf = std::function<std::string(const QModelIndex&)>;
  DirectoryDrop(QTreeView& view, PathOf pathOf);

  /// The row that would take what is dragged; invalid for none.
  QModelIndex Target() const { return target_; }

 Q_SIGNALS:
  /// Once the drag is over.
  void dropped(const ml::catalogue::ui::DroppedFiles& files);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void Hover(QDropEvent& event);
  void Drop(QDropEvent& event);
  void SetTarget(const QModelIndex& index);

  QTreeView& view_;
  const PathOf pathOf_;
  QPersistentModelIndex target_;
  QBasicTimer open_, scroll_;
};

}  // namespace ml::catalogue::ui
