#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <functional>

#include "app/iptc_sheet.h"
#include "app/main_frame.h"
#include "app/session.h"
#include "platform/paths.h"
#include "support/fakes.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

using metadata::ui::CIptcPropertySheet;

struct Toolkit {
  int offscreen = ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  int argc = 0;
  QApplication application{argc, nullptr};
};

/// The window over a directory, from which the command opens the sheet.
class IptcCommand : public testing::Test {
 protected:
  IptcCommand() {
    for (const auto* name : {"1.jpg", "2.gif", "3.jpg", "4.crw", "5.jpg"}) {
      photos.Write(name, test::MakePhoto({.width = 30, .height = 20, .thumbnail = false}));
    }
    session.Images().LoadDirectory(photos.Path(), "");
    frame.show();
    frame.UpdateAll();
  }
  ~IptcCommand() override { session.Worker().Pause(); }

  void Choose(const std::vector<int>& indices) {
    session.list.SelectNone();
    for (const int index : indices) session.list.marks[static_cast<std::size_t>(index)].selected = true;
    session.list.focusIndex = indices.back();
  }
  /// Runs the command; false if no sheet comes up.
  bool Edit(const std::function<void(CIptcPropertySheet&)>& edit) {
    bool met = false;
    QTimer::singleShot(20, &frame, [&] {
      auto* sheet = qobject_cast<CIptcPropertySheet*>(QApplication::activeModalWidget());
      if (sheet == nullptr) return;
      met = true;
      edit(*sheet);
      sheet->close();
    });
    frame.Runner().Run(CommandId::EditIptcData);
    QTest::qWait(30);
    return met;
  }

  Toolkit toolkit;
  test::TempDir photos;
  test::ScriptedInteraction ask;
  Session session{{}, ask, [](int) {}};
  CMainFrame frame{session};
};

TEST_F(IptcCommand, GoesThroughWhatIsChosen) {
  struct Case {
    std::vector<int> chosen;
    ViewMode mode;
    const char* title;
  };
  const Case cases[] = {{{0, 1, 2}, ViewMode::Thumbnails, "IPTC Data - 3.jpg - Image 2 of 2"},
                        {{4}, ViewMode::Thumbnails, "IPTC Data - 5.jpg - Image 3 of 3"},
                        {{0, 2}, ViewMode::Main, "IPTC Data - 3.jpg - Image 2 of 3"}};
  for (const auto& c : cases) {
    Choose(c.chosen);
    session.mode = c.mode;
    session.list.currentIndex = c.chosen.back();
    EXPECT_TRUE(Edit([&](const auto& sheet) { EXPECT_EQ(sheet.windowTitle().toStdString(), c.title); })) << c.title;
  }
  session.mode = ViewMode::Thumbnails;
  Choose({0, 3});
  EXPECT_FALSE(Edit([](const auto&) {})) << "a raw file without companion holds none";
}

TEST_F(IptcCommand, RemembersItsPageAndItsRules) {
  Choose({0});
  EXPECT_TRUE(Edit([](auto& sheet) {
    sheet.ShowPage(3);
    sheet.template findChild<QCheckBox*>(QStringLiteral("IptcExifTimestamp"))->click();
  }));
  EXPECT_EQ(session.settings.iptc.exifTimestamp, 0);
  EXPECT_EQ(session.settings.iptc.mergeKeywords, 1);
  EXPECT_TRUE(Edit([](const auto& sheet) {
    EXPECT_EQ(sheet.Page(), 3);
    EXPECT_FALSE(sheet.Rules().exifTimestamp);
  }));
}

}  // namespace
}  // namespace ml::app
