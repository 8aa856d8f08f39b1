#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "app/command_table.h"
#include "app/panes.h"
#include "app/session.h"
#include "app/shooting_data_memory.h"
#include "catalogue/transfer_files.h"

namespace ml::catalogue::ui {
struct DroppedFiles;
}  // namespace ml::catalogue::ui

namespace ml::app {

class CommandActions;
class HistogramDisplay;
class MainDisplay;
class ShootingDataDisplay;

enum class Reload { IfOther, Force };

/// All panes of the window: directory tree, thumbnail list, picture, summary, shooting data, histogram. Shows the
/// session in them and forwards what the user does in one; which of them show and where is the matter of Panes.
class CMarrowlanternView final : public QWidget, private SessionObserver {
  Q_OBJECT

 public:
  CMarrowlanternView(Session& session, QWidget* parent);
  ~CMarrowlanternView() override;

  /// The buttons and context menus of the panes.
  void SetActions(const CommandActions& actions);

  /// The single way to change the mode.
  void SetViewMode(ViewMode mode);
  /// Makes the image at `index` the current one at once and, where the mode has a picture, shows it as soon as it is
  /// ready. The old picture stays until then.
  void LoadImage(int index, Reload reload);
  /// The current image once more, from its file.
  void ReloadImage();

  /// Shows the panes that mode and settings want.
  void ApplyLayout() { panes_.Apply(); }
  /// Collapses the pane with the shooting data, or brings it back at the size it had.
  void ToggleLowerPane() { panes_.ToggleLowerPane(); }
  /// Brings back the panes of the film strip that are collapsed.
  void OpenPanes() { panes_.Open(); }
  void ThumbnailSizeChanged();
  void BlackAndWhiteChanged();
  /// Colours, outlines, tree and histogram as the settings want them now.
  void SettingsChanged();
  void ThumbnailReady(int index);
  /// Brings names and texts up to date.
  void Refresh();
  /// Tags, selection or focus were changed by a command.
  void MarksChanged();
  /// The topmost thumbnail in sight, and the way back to it; empty for none.
  std::string TopPath() const;
  void ScrollToTop(const std::string& path);
  /// Looks again at the directories of the tree.
  void RefreshTree();
  /// Selects a directory in the tree, without a load.
  void SelectInTree(const std::string& directory);
  /// The directory chosen in the tree; empty if there is none.
  std::string TreeDirectory() const;
  /// Entries bear other names now, in the same places.
  void NamesChanged() { ListReordered(); }
  void FocusList();
  void FocusMainPane();
  MainDisplay& Display() { return *display_; }
  HistogramDisplay& Histograms() { return *histograms_; }
  ShootingDataDisplay& ShootingData() { return *shootingData_; }

 Q_SIGNALS:
  /// Focus, selection, tags or the current image are other ones now.
  void changed();
  void commandWanted(CommandId id);
  void directoryChosen(const std::string& directory);
  /// Another directory is on show, or the same one was looked at again; its list follows.
  void directoryShown();
  void pathsDropped(const std::vector<std::string>& paths);
  /// Onto a directory of the tree.
  void transferWanted(ml::catalogue::TransferKind kind, const std::string& directory,
                      const std::vector<std::string>& paths);
  void colourUnderMouse(const QString& text);
  void recentDirectoriesChanged();
  /// The mode is another one now, its panes show.
  void viewModeChanged(ViewMode mode);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void DirectoryShown(const std::string& directory) override;
  void ListReplaced() override;
  void ListReordered() override;
  void ShowImage(int index) override;
  void RecentDirectoriesChanged() override;
  void AddPaneFacts(CommandState& state) const override;

  void ApplySettings();
  void ConnectList();
  void ConnectPicture();
  void ConnectRest();
  void TakeDropped(const catalogue::ui::DroppedFiles& files);
  void PopUpTreeMenu(const CommandActions& actions, const QPoint& where);
  void BringFocusToCurrent();
  void BringTargetIntoSight();
  CommandId DoubleClickMeans() const;
  void ActivatePicture();
  void MoveSelectedTo(int position);
  std::string ShortSummary(const std::string& path);
  void TurnWheel(int notches, Qt::KeyboardModifiers modifiers);
  void GoTo(int index, Reload reload);

  Session& session_;
  Panes panes_;
  ShootingDataMemory hovered_;
  MainDisplay* display_;
  HistogramDisplay* histograms_;
  ShootingDataDisplay* shootingData_;
};

}  // namespace ml::app
