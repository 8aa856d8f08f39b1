#pragma once

#include <QElapsedTimer>
#include <QListView>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/image_list.h"
#include "catalogue/thumbnail_thread.h"
#include "catalogue/ui/thumbnail_cell.h"

namespace ml::catalogue::ui {

class SelectionLink;
class ThumbnailDrag;
class ThumbnailDelegate;
class ThumbnailModel;

/// The thumbnails of the catalogue. Selection and focus live in the ImageList: the view writes them there as
/// the user changes them, and reads them after a call of MarksChanged(). The worker is told what is in sight.
/// List and worker outlive the view; all calls on the thread that owns the list.
class ThumbnailListView final : public QListView {
  Q_OBJECT

 public:
  /// Rows from left to right that scroll down, or columns that scroll to the right.
  enum class Arrangement { Rows, Columns };

  ThumbnailListView(ImageList& list, CThumbnailThread& worker, QWidget* parent = nullptr);

  /// Other entries in the list, or none.
  void ListReplaced();
  /// The same entries in another order: what stood on top of the view is brought back there.
  void ListReordered();
  /// Tags, selection or focus were changed in the list.
  void MarksChanged();
  /// The worker finished an entry: draws it and sends the worker on to what is in sight. Does nothing while
  /// the view is hidden.
  void ItemReady(int index);

  /// Edge of the square that thumbnails fit into, in logical pixels; the first item in sight stays there.
  void SetThumbnailSize(int size);
  /// The size that the worker must make for sharp thumbnails on this screen, in pixels.
  int ThumbnailPixels() const;
  /// The scheme "white", "border" (or "gray"), or black for anything else.
  void SetColours(std::string_view name);
  /// Width of the line around tagged items, 0..2.
  void SetTagOutline(int width);
  void SetBlackAndWhite(bool on);
  void SetArrangement(Arrangement arrangement);
  /// Shown while the list is empty.
  void SetEmptyText(const QString& text);
  /// What the tool tip of a good thumbnail tells besides the name, asked for when it comes up.
  void SetDescriber(std::function<std::string(const std::string& path)> describe);
  /// Of one line of cells with its scroll bar.
  int OneLineHeight() const;
  /// Of one column of cells with its scroll bar.
  int OneColumnWidth() const;

  /// Moves the focus to an entry and scrolls it into sight; the selection stays. -1 takes the focus away.
  void SetFocus(int index);
  void ScrollTo(int index, ScrollHint hint = EnsureVisible);
  /// The topmost item in sight; -1 if there is none.
  int TopVisibleIndex() const;

 Q_SIGNALS:
  /// Enter, or a double click.
  void imageActivated(int index);
  /// The tag key was pressed.
  void tagToggled();
  void selectionEdited();
  void focusMoved(int index);
  void contextMenuWanted(const QPoint& globalPosition);
  void pathsDropped(const std::vector<std::string>& paths);
  /// The view came to a screen with another scale: ThumbnailPixels() changed.
  void pixelRatioChanged();
  /// The user dragged the selected entries to before the entry at `position`, or behind the last one.
  void moveWanted(int position);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void startDrag(Qt::DropActions supported) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

 private:
  static std::optional<GridMove> MoveOf(CursorAction action, bool columns);
  bool FocusInSight() const;
  QModelIndex IndexOf(int row) const;
  int ItemsInLine() const;
  bool IsTypingAhead() const;
  void TypeAhead(const QString& text);
  void ApplyGeometry(int size);
  void LookAtTop();
  void PaintEmpty();
  void WatchPixelRatio();

  ImageList& list_;
  CThumbnailThread& worker_;
  ThumbnailModel* model_;
  ThumbnailDelegate* delegate_;
  SelectionLink* link_ = nullptr;
  ThumbnailDrag* drag_ = nullptr;
  QString emptyText_;
  std::string topPath_;  ///< what stood on top when last looked, to come back to it after a new order
  QElapsedTimer lastTyped_;
  double pixelRatio_ = 0;
  bool takingFocus_ = false;
};

}  // namespace ml::catalogue::ui
