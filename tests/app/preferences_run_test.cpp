#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>

#include "app/preferences/ui/preferences_dialog.h"
#include "app/program_run.h"

namespace ml::app {
namespace {

class PreferencesInARun : public ProgramRun {
 protected:
  PreferencesInARun() {
    photos.Write("a.jpg", test::MakePhoto({.width = 300, .height = 200, .orientation = 6}));
    photos.Write("b.jpg", test::MakePhoto({.width = 300, .height = 200}));
    photos.Write(".hidden.jpg", test::MakePhoto({.width = 30, .height = 20}));
  }

  /// Opens the Preferences; `edit` runs while they are open and sees to it that they close.
  static void Edit(CMainFrame& frame, const std::function<void(CPreferencesDialog&)>& edit) {
    bool met = false;
    QTimer::singleShot(50, &frame, [&] {
      auto* dialog = qobject_cast<CPreferencesDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      met = true;
      edit(*dialog);
      dialog->close();
    });
    frame.Runner().Run(CommandId::Preferences);
    EXPECT_TRUE(met);
  }
  static void Flip(CPreferencesDialog& dialog, const char* key) {
    dialog.findChild<QCheckBox*>(QLatin1String(key))->click();
  }
  static void Press(CPreferencesDialog& dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
  }
};

TEST_F(PreferencesInARun, TakeEffectAtOnceAndAreRemembered) {
  Start({photos.Path()}, [](CMainFrame& frame, Session& session) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.Worker().FinishedCount() == 2; }, 30'000));
    EXPECT_GT(session.Worker().Item(0)->pixels.width, session.Worker().Item(0)->pixels.height);
    session.list.SetTag(0, true);
    Edit(frame, [&](CPreferencesDialog& dialog) {
      Flip(dialog, "ShowHiddenDirectories");
      Press(dialog, QDialogButtonBox::Apply);
      EXPECT_EQ(session.list.Count(), 3) << "behind the open window";
      EXPECT_EQ(session.list.TaggedCount(), 1);
      Flip(dialog, "UseJpegExifOrientation");
      Flip(dialog, "Wraparound");
      dialog.ShowPage(2);
      dialog.resize(700, 500);
      Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(session.State().wraparound);
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.Worker().FinishedCount() == 3; }, 30'000));
    const auto* item = session.Worker().Item(session.list.IndexOfPath(session.list.TaggedPaths().at(0)));
    ASSERT_NE(item, nullptr);
    EXPECT_LT(item->pixels.width, item->pixels.height) << "made again, and turned";
    Edit(frame, [](CPreferencesDialog& dialog) {
      EXPECT_EQ(dialog.Page(), 2);
      Flip(dialog, "Wraparound");
      Press(dialog, QDialogButtonBox::Cancel);
    });
    EXPECT_TRUE(session.State().wraparound);
  });
  Start({photos.Path()}, [](CMainFrame& frame, Session& session) {
    EXPECT_EQ(session.list.Count(), 3);
    EXPECT_TRUE(session.State().wraparound);
    Edit(frame, [](CPreferencesDialog& dialog) {
      EXPECT_EQ(dialog.size(), QSize(700, 500));
      EXPECT_TRUE(dialog.findChild<QCheckBox*>(QStringLiteral("UseJpegExifOrientation"))->isChecked());
    });
  });
}

TEST_F(PreferencesInARun, ReloadThePictureOnShow) {
  Start({photos.Path()}, [](CMainFrame& frame, Session& session) {
    frame.Runner().Run(CommandId::MainView);
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.current.width == 300; }, 30'000));
    Edit(frame, [](CPreferencesDialog& dialog) {
      Flip(dialog, "UseJpegExifOrientation");
      Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return session.current.width == 200; }, 30'000));
  });
}

}  // namespace
}  // namespace ml::app
