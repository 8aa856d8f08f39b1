#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/application.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::app {

/// Presses OK on each box that comes up and keeps its text.
class BoxReader {
 public:
  void Start() {
    timer_ = std::make_unique<QTimer>();
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      texts.push_back(box->text().toStdString());
      box->accept();
    });
    timer_->start(20);
  }
  std::vector<std::string> texts;

 private:
  std::unique_ptr<QTimer> timer_;
};

/// Runs of the whole program over a directory, with settings and journal of their own.
class ProgramRun : public testing::Test {
 protected:
  using Names = std::vector<std::string>;

  ProgramRun() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    for (const auto* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
      ::setenv(variable, (home / "xdg").c_str(), 1);
    }
  }
  /// img_1.jpg, img_2.jpg and img_10.jpg, of 300 x 200 pixels.
  void AddPhotos() const {
    for (const auto* name : {"img_2.jpg", "img_10.jpg", "img_1.jpg"}) {
      photos.Write(name, test::MakePhoto({.width = 300, .height = 200}));
    }
  }

  /// One run of the program; `act` runs after the first load and sees to it that the program ends.
  int Launch(const Names& names, const std::function<void(CMainFrame&, Session&)>& act) {
    Names arguments{"marrowlantern"};
    arguments.insert(arguments.end(), names.begin(), names.end());
    std::vector<char*> argv;
    for (auto& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    int argc = static_cast<int>(arguments.size());
    return RunApplication(argc, argv.data(), act);
  }
  /// The same with boxes answered and "Quit" at the end.
  void Start(const Names& names, const std::function<void(CMainFrame&, Session&)>& act) {
    Launch(names, [&](CMainFrame& frame, Session& session) {
      BoxReader reader;
      reader.Start();
      act(frame, session);
      boxes = reader.texts;
      frame.Runner().Run(CommandId::Quit);
    });
  }

  static Names FilesOf(const Session& session) {
    Names names;
    for (const auto& path : session.list.files) names.push_back(path.substr(path.rfind('/') + 1));
    return names;
  }
  static catalogue::ui::ThumbnailListView& Thumbnails(CMainFrame& frame) {
    return *frame.findChild<catalogue::ui::ThumbnailListView*>();
  }
  /// Until the picture of the current image shows.
  static void AwaitPicture(CMainFrame& frame) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !frame.View().Display().Busy(); }, 30'000));
  }
  static void RunAndAwait(CMainFrame& frame, CommandId id) {
    frame.Runner().Run(id);
    AwaitPicture(frame);
  }
  std::string SettingsText() const { return test::ReadAll(home / "xdg/Tarnwick/Marrowlantern/100.toml").value_or(""); }

  test::TempDir home, photos;
  Names boxes;
};

}  // namespace ml::app
