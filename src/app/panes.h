#pragma once

#include <QObject>
#include <string>

#include "app/view_layout.h"

class QSplitter;
class QWidget;

namespace ml::catalogue::ui {
class DirectoryTree;
class ThumbnailListView;
}  // namespace ml::catalogue::ui

namespace ml::app {

class ControlColumn;
class PictureView;
class Session;
class SummaryPane;

/// The panes of the window in their splitters: each shows where the mode of the session and the places that the
/// settings remember want it, and a splitter that the user moves is remembered there.
class Panes final : public QObject {
 public:
  /// The panes fill `parent`, which owns them. Nothing is laid out yet.
  Panes(Session& session, QWidget& parent);

  catalogue::ui::DirectoryTree* Tree() const { return tree_; }
  catalogue::ui::ThumbnailListView* Thumbnails() const { return thumbnails_; }
  PictureView* Picture() const { return picture_; }
  ControlColumn* Controls() const { return controls_; }
  /// Of the column with the controls, in pixels of the screen; 0 if it is hidden.
  int ColumnWidth() const;
  /// The shooting data of the image in both panes that have them.
  void SetSummary(const std::string& text);

  /// Puts the thumbnails where the mode wants them; to be called when mode or size of the thumbnails have changed,
  /// and Apply() after it.
  void Arrange();
  /// Shows the panes that mode and settings want, at their sizes.
  void Apply();
  /// The film strip's places as they fit into the parent.
  void LimitPlaces();
  /// Collapses the pane with the shooting data, or brings it back at the size it had.
  void ToggleLowerPane();
  /// Brings back the panes of the film strip that are collapsed.
  void Open();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  SplitterPlaces Places() const;
  void SetPlaces(const SplitterPlaces& places);
  void TakePlaces();

  Session& session_;
  QWidget& parent_;
  QSplitter* outer_;
  QSplitter* left_;
  QSplitter* center_;
  catalogue::ui::DirectoryTree* tree_;
  catalogue::ui::ThumbnailListView* thumbnails_;
  PictureView* picture_;
  ControlColumn* controls_;
  SummaryPane* summary_;
  QSplitter* film_;          ///< picture, strip where it lies below it, shooting data
  SummaryPane* lower_;       ///< the shooting data in it
  int lowerBeforeDrag_ = 0;  ///< its place when the mouse took hold of a splitter
};

}  // namespace ml::app
