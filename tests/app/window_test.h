#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/own_home.h"
#include "app/session.h"
#include "support/fakes.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::app {

struct Toolkit {
  int offscreen = ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  int argc = 0;
  QApplication application{argc, nullptr};
};

/// The window over the directory "day" of the test, without the program around it. Journal and trash lie in the test's
/// directory too. Tests fill "day" and then call Open().
class WindowTest : public testing::Test {
 protected:
  using Names = std::vector<std::string>;

  WindowTest() {
    UseOwnHome();
    ::setenv("XDG_STATE_HOME", (dir / "state").c_str(), 1);
  }
  ~WindowTest() override {
    if (session) session->Worker().Pause();
    frame.reset();
  }

  std::string Day(const std::string& name) const { return dir / ("day/" + name); }
  void AddPhotos(const Names& names) const {
    for (const auto& name : names) dir.Write("day/" + name, test::MakePhoto({.width = 300, .height = 200}));
  }
  void Open(settings::Settings settings = {}) {
    session = std::make_unique<Session>(std::move(settings), ask, [](int) {});
    frame = std::make_unique<CMainFrame>(*session);
    frame->resize(1000, 700);
    frame->show();
    static_cast<void>(QTest::qWaitForWindowExposed(frame.get()));
    session->Images().LoadDirectory(dir / "day", "");
    frame->UpdateAll();
    frame->View().FocusMainPane();
  }

  void Run(CommandId id) { frame->Runner().Run(id); }
  /// Runs the command; `use` gets the dialog that it opens, which is closed in the end. False: it opened none.
  template <class Dialog = QDialog>
  bool RunWithDialog(CommandId id, const std::function<void(Dialog&)>& use) {
    constexpr int kLookMilliseconds = 10;
    bool met = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, frame.get(), [&] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || met) return;
      met = true;
      try {
        use(*dialog);
      } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
      }
      if (dialog->isVisible()) dialog->close();
    });
    look.start(kLookMilliseconds);
    Run(id);
    return met;
  }

  /// Selects these images; the first of them has the focus.
  void Select(const std::vector<int>& indices) {
    session->list.SelectNone();
    for (const int i : indices) session->list.marks[static_cast<std::size_t>(i)].selected = true;
    if (!indices.empty()) session->list.focusIndex = indices.front();
    frame->UpdateAll();
  }
  Names Files() const {
    Names names;
    for (const auto& path : session->list.files) names.push_back(path.substr(path.rfind('/') + 1));
    return names;
  }
  /// The text of the last box; empty if there was none.
  std::string LastText() const { return ask.shown.empty() ? "" : ask.shown.back().text; }

  const test::TempDir dir;
  Toolkit toolkit;
  test::ScriptedInteraction ask;
  std::unique_ptr<Session> session;
  std::unique_ptr<CMainFrame> frame;
};

}  // namespace ml::app
