#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "app/command_runner.h"
#include "settings/groups/window_settings.h"

class QLabel;

namespace ml::app {

class CommandActions;

/// The main window: menus, tool bar, status bar and the view between them.
class CMainFrame final : public QMainWindow {
  Q_OBJECT

 public:
  explicit CMainFrame(Session& session);
  ~CMainFrame() override;

  CMarrowlanternView& View() { return *view_; }
  CommandRunner& Runner() { return *runner_; }
  const CommandActions& Actions() const { return *actions_; }

  /// Where the window was, and where it is now.
  void RestorePlace(const settings::WindowSettings& place);
  void SavePlace(settings::WindowSettings& place) const;

  /// Brings commands, title, texts and status line up to date with the session.
  void UpdateState();
  /// The same, and the marks of the list, which a command may have changed.
  void UpdateAll();
  /// A thumbnail is finished.
  void ThumbnailReady(int index);

 Q_SIGNALS:
  /// Once, after the window came up for the first time.
  void firstShown();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void MakeStatusBar();
  void Connect();
  void NameUndo();
  void ShowMadeText();

  Session& session_;
  CMarrowlanternView* view_;
  CommandActions* actions_;
  std::unique_ptr<CommandRunner> runner_;
  QLabel* text_ = nullptr;
  QLabel* colour_ = nullptr;
  QLabel* selection_ = nullptr;
  QLabel* made_ = nullptr;
  QTimer madeTimer_;
  bool firstShow_ = true;
};

}  // namespace ml::app
