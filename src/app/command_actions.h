#pragma once

#include <QObject>
#include <array>
#include <functional>
#include <optional>
#include <span>

#include "app/command_table.h"
#include "settings/groups/window_settings.h"

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;

namespace ml::app {

/// The command table as the toolkit's actions, and the menus and the tool bar made of them. The actions belong
/// to this object.
class CommandActions final : public QObject {
  Q_OBJECT

 public:
  explicit CommandActions(QObject* parent);

  QAction* At(CommandId id) const { return actions_[static_cast<std::size_t>(id)]; }
  /// Switches every action on or off and sets its mark. What this version cannot run stays off, its tip says so.
  void Update(const CommandState& state);

  void FillMenuBar(QMenuBar& bar);
  void FillToolBar(QToolBar& bar);
  /// What can be done now with the images in a pane; what is off stays out of it.
  void FillContextMenu(QMenu& menu) const;
  /// The same for the directory chosen in the tree.
  void FillTreeMenu(QMenu& menu) const;
  QMenu* MenuOf(Menu menu) const { return menus_[static_cast<std::size_t>(menu)]; }
  /// The entries for `recent`, in the File menu and below the button for opening.
  void ShowRecent(const settings::RecentDirectories& recent);

 Q_SIGNALS:
  void triggered(CommandId id, int argument);

 private:
  void FillMenu(QMenu& menu, std::span<const std::optional<CommandId>> rows) const;

  std::array<QAction*, kCommandCount> actions_{};
  std::array<QMenu*, kMenuCount> menus_{};
  std::array<QAction*, settings::kMaxRecentDirectories> recent_{};
};

}  // namespace ml::app
