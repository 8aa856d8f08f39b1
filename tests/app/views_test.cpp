#include <QAction>
#include <QCheckBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QSplitter>

#include "app/command_actions.h"
#include "app/control_column.h"
#include "app/image_texts.h"
#include "app/main_display.h"
#include "app/picture_view.h"
#include "app/summary_pane.h"
#include "app/theme.h"
#include "app/window_test.h"
#include "catalogue/ui/directory_tree.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "platform/ui/internal_drag.h"

namespace ml::app {
namespace {

using catalogue::ui::ThumbnailListView;

class Views : public WindowTest {
 protected:
  void Open(settings::Settings settings = {}) {
    AddPhotos({"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"});
    WindowTest::Open(std::move(settings));
  }

  template <class Widget>
  Widget& Pane() {
    return *frame->findChild<Widget*>();
  }
  SummaryPane& ShootingData() {
    for (auto* pane : frame->findChildren<SummaryPane*>()) {
      if (pane->accessibleName() == QStringLiteral("Shooting data")) return *pane;
    }
    throw std::logic_error("no such pane");
  }
  ThumbnailListView& List() { return Pane<ThumbnailListView>(); }
  settings::CatalogueSettings& Kept() { return session->settings.catalogue; }
};

TEST_F(Views, EachModeShowsItsPanesAndSurvivesTheOthers) {
  Open();
  struct Case {
    CommandId id;
    ViewMode mode;
    bool tree, list, picture, controls, data;
  };
  const Case cases[] = {{CommandId::FilmStripBelow, ViewMode::FilmStripBelow, false, true, true, false, true},
                        {CommandId::MainView, ViewMode::Main, false, false, true, true, false},
                        {CommandId::FilmStripSide, ViewMode::FilmStripSide, false, true, true, false, true},
                        {CommandId::ThumbnailView, ViewMode::Thumbnails, true, true, false, false, false}};
  for (int round = 0; round < 2; ++round) {
    for (const auto& c : cases) {
      Run(c.id);
      SCOPED_TRACE(static_cast<int>(c.mode));
      EXPECT_EQ(session->mode, c.mode);
      EXPECT_EQ(Pane<catalogue::ui::DirectoryTree>().isVisible(), c.tree);
      EXPECT_EQ(List().isVisible(), c.list);
      EXPECT_EQ(Pane<PictureView>().isVisible(), c.picture);
      EXPECT_EQ(Pane<ControlColumn>().isVisible(), c.controls);
      EXPECT_EQ(ShootingData().isVisible(), c.data);
      EXPECT_TRUE(frame->Actions().At(c.id)->isChecked());
    }
  }
}

TEST_F(Views, FilmStripGoesRoundAndKeepsItsPlaces) {
  settings::Settings settings;
  settings.catalogue.filmStripSplitterPos = 260;
  settings.catalogue.filmStripHorizontalSplitterPos = 140;
  Open(std::move(settings));
  Run(CommandId::MainView);
  Run(CommandId::NextImage);
  Run(CommandId::FilmStripView);
  EXPECT_EQ(session->mode, ViewMode::FilmStripSide);
  EXPECT_EQ(session->list.SelectedIndices(), std::vector<int>{1});
  QApplication::processEvents();
  EXPECT_EQ(List().width(), 260);
  EXPECT_EQ(ShootingData().height(), 140);
  Run(CommandId::FilmStripView);
  EXPECT_EQ(session->mode, ViewMode::FilmStripBelow);
  QApplication::processEvents();
  EXPECT_GT(List().width(), 900);
  EXPECT_GT(List().y(), Pane<PictureView>().geometry().bottom()) << "the strip lies below the picture";
  EXPECT_EQ(ShootingData().height(), 140);
  Run(CommandId::FilmStripView);
  EXPECT_EQ(session->mode, ViewMode::FilmStripSide);
  QApplication::processEvents();
  EXPECT_EQ(List().width(), 260);
  EXPECT_EQ(Kept().filmStripSplitterPos, 260);
  EXPECT_EQ(Kept().filmStripHorizontalSplitterPos, 140);
  Run(CommandId::ThumbnailView);
  Run(CommandId::FilmStripView);
  EXPECT_EQ(session->mode, ViewMode::FilmStripSide);
}

TEST_F(Views, FocusedImageStaysInSight) {
  Open();
  Kept().filmStripSplitterPos = 600;
  Run(CommandId::ExtraLargeThumbnails);
  const auto inSight = [&] {
    QApplication::processEvents();
    return List().visualRect(List().currentIndex()).intersects(List().viewport()->rect());
  };
  for (const auto mode : {CommandId::FilmStripSide, CommandId::FilmStripBelow}) {
    SCOPED_TRACE(static_cast<int>(mode));
    Run(CommandId::SmallThumbnails);
    Run(mode);
    QTest::keyClick(&List(), Qt::Key_End);
    ASSERT_TRUE(inSight());
    Run(CommandId::ExtraLargeThumbnails);
    EXPECT_TRUE(inSight()) << "larger thumbnails";
  }
  Run(CommandId::FilmStripSide);
  EXPECT_TRUE(inSight());
  frame->resize(700, 500);
  EXPECT_TRUE(inSight()) << "fewer thumbnails in a row";
  List().scrollToTop();
  Run(CommandId::ThumbnailView);
  EXPECT_TRUE(inSight()) << "another view";
  Run(CommandId::FilmStripBelow);
  EXPECT_TRUE(QTest::qWaitFor(inSight)) << "a strip that gets its size later";
}

TEST_F(Views, PictureGetsItsFocusRingFromTheTabKeyOnly) {
  Open();
  Run(CommandId::FilmStripSide);
  Run(CommandId::MainView);
  auto& picture = Pane<PictureView>();
  const auto corner = [&] { return picture.grab().toImage().pixelColor(1, 1); };
  EXPECT_TRUE(QTest::qWaitFor([&] { return !frame->View().Display().Busy(); }, 30'000));
  EXPECT_EQ(frame->focusWidget(), &picture);
  EXPECT_EQ(corner(), PictureGround()) << "the pane that hid had the focus";
  Pane<ControlColumn>().findChild<QCheckBox*>()->setFocus();
  picture.setFocus(Qt::TabFocusReason);
  EXPECT_NE(corner(), PictureGround());
}

TEST_F(Views, ShootingDataCollapsesAndComesBack) {
  Open();
  Kept().filmStripHorizontalSplitterPos = 180;
  Run(CommandId::ShowExifData);
  EXPECT_EQ(session->mode, ViewMode::FilmStripSide);
  EXPECT_TRUE(ShootingData().isVisible());
  Run(CommandId::ShowExifData);
  EXPECT_FALSE(ShootingData().isVisible());
  EXPECT_EQ(Kept().filmStripHorizontalSplitterPos, -180);
  Run(CommandId::FilmStripBelow);
  EXPECT_FALSE(ShootingData().isVisible());
  Run(CommandId::ShowExifData);
  EXPECT_EQ(session->mode, ViewMode::FilmStripSide);
  EXPECT_TRUE(ShootingData().isVisible());
  QApplication::processEvents();
  EXPECT_EQ(ShootingData().height(), 180) << Kept().filmStripHorizontalSplitterPos;
  EXPECT_TRUE(ShootingData().toPlainText().startsWith(QStringLiteral("File: ")));
  EXPECT_TRUE(ShootingData().toPlainText().contains(QStringLiteral("\nImage size: 300 x 200\n")))
      << ShootingData().toPlainText().toStdString();
}

TEST_F(Views, ShootingDataClosedByTheMouseComesBackAsItWas) {
  Open();
  Kept().filmStripHorizontalSplitterPos = 180;
  Run(CommandId::FilmStripSide);
  QApplication::processEvents();
  auto* splitter = qobject_cast<QSplitter*>(ShootingData().parentWidget());
  auto* handle = splitter->handle(splitter->count() - 1);
  const auto send = [&](QEvent::Type type, int y) {
    const QPoint where = splitter->mapToGlobal(QPoint(50, y));
    QMouseEvent event(type, handle->mapFromGlobal(where), where, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(handle, &event);
  };
  send(QEvent::MouseButtonPress, handle->y());
  for (const int fromBelow : {120, 60, 0}) send(QEvent::MouseMove, splitter->height() - fromBelow);
  send(QEvent::MouseButtonRelease, splitter->height());
  EXPECT_EQ(Kept().filmStripHorizontalSplitterPos, -180);
}

TEST_F(Views, StripShowsExtraLargeThumbnailsWhole) {
  Open();
  Run(CommandId::ExtraLargeThumbnails);
  Run(CommandId::FilmStripSide);
  QApplication::processEvents();
  EXPECT_GE(List().viewport()->width(), List().gridSize().width());
}

TEST_F(Views, TellOfTheImageWhatTheSettingsSay) {
  settings::Settings settings;
  settings.shootingData.exifFormatString = "@file@ @imageNumber@/@numberOfImages@\\n@x@";
  settings.shootingData.mainExifFormatString = "@fileNoExt@\\n@width@";
  settings.shootingData.filmStripExifFormatString = "@year@ of @imageNumber@";
  Open(std::move(settings));
  Run(CommandId::MainView);
  Run(CommandId::NextImage);
  EXPECT_EQ(StatusText(*session), "2.jpg 2/5\\n@x@");
  EXPECT_EQ(SummaryText(*session), "2\n300");
  Run(CommandId::FilmStripView);
  EXPECT_EQ(ShootingData().toPlainText(), QStringLiteral("2003 of @imageNumber@"));
}

TEST_F(Views, ModeOfTheLastRunComesBack) {
  settings::Settings settings;
  settings.catalogue.thumbnailMode = 3;
  Open(std::move(settings));
  EXPECT_TRUE(Pane<PictureView>().isVisible());
  EXPECT_TRUE(QTest::qWaitFor([&] { return !frame->View().Display().Busy(); }, 30'000));
  EXPECT_EQ(session->current.width, 300);
  EXPECT_GT(List().y(), Pane<PictureView>().geometry().bottom());
}

TEST_F(Views, PictureFollowsTheStrip) {
  Open();
  Run(CommandId::FilmStripBelow);
  EXPECT_EQ(frame->focusWidget(), &List());
  QTest::keyClick(&List(), Qt::Key_End);
  EXPECT_EQ(session->list.currentPath, Day("5.jpg"));
  EXPECT_EQ(frame->windowTitle().toStdString(), "5.jpg - Marrowlantern");
  QTest::keyClick(&List(), Qt::Key_Left);
  EXPECT_EQ(session->list.currentPath, Day("4.jpg"));
  QTest::keyClick(frame.get(), Qt::Key_Escape);
  EXPECT_EQ(session->mode, ViewMode::Thumbnails);
  QTest::keyClick(frame.get(), Qt::Key_3);
  EXPECT_EQ(session->mode, ViewMode::FilmStripSide);
}

TEST_F(Views, EnterDoesWhatTheSettingsSay) {
  Open();
  QTest::keyClick(&List(), Qt::Key_End);
  Kept().imageDclickAction = 6;
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(session->mode, ViewMode::FilmStripBelow);
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(session->mode, ViewMode::Thumbnails);
  Kept().imageDclickAction = 1;
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(session->mode, ViewMode::Main) << "there is no such command yet";
  Kept().imageDclickAction = 0;
  QTest::mouseDClick(&Pane<PictureView>(), Qt::LeftButton);
  EXPECT_EQ(session->mode, ViewMode::Thumbnails);
}

TEST_F(Views, DraggedThumbnailsMakeACustomOrder) {
  Open();
  session->list.SelectNone();
  session->list.marks[3].selected = session->list.marks[4].selected = true;
  session->list.SetTag(4, true);
  session->list.focusIndex = 4;
  frame->UpdateAll();
  QMimeData data;
  platform::ui::MarkInternalDrag(data);
  const QPoint second = List().visualRect(List().model()->index(1, 0)).center();
  QDragEnterEvent enter(second, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(List().viewport(), &enter);
  QDropEvent drop(second, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(List().viewport(), &drop);
  EXPECT_EQ(Files(), (Names{"1.jpg", "4.jpg", "5.jpg", "2.jpg", "3.jpg"}));
  EXPECT_EQ(session->list.SelectedIndices(), (std::vector<int>{1, 2}));
  EXPECT_EQ(session->list.TaggedPaths(), Names{Day("5.jpg")});
  EXPECT_EQ(List().currentIndex().row(), 2);
  EXPECT_EQ(session->list.sortMethod, catalogue::SortMethod::Custom);
  EXPECT_TRUE(session->list.orderChangedByHand);
  EXPECT_TRUE(frame->Actions().At(CommandId::CustomOrder)->isChecked());
  Run(CommandId::SortNumerically);
  Run(CommandId::CustomOrder);
  EXPECT_EQ(Files(), (Names{"1.jpg", "4.jpg", "5.jpg", "2.jpg", "3.jpg"})) << "remembered";
}

TEST_F(Views, BlackAndWhiteMeansTheThumbnailsToo) {
  Open();
  ASSERT_TRUE(QTest::qWaitFor([&] { return session->Worker().FinishedCount() == 5; }, 30'000));
  const auto saturation = [&] {
    const auto cell = List().visualRect(List().model()->index(2, 0));
    const QImage picture = List().viewport()->grab(QRect(cell.center() - QPoint(20, 10), QSize(40, 20))).toImage();
    int most = 0;
    for (int x = 0; x < picture.width(); ++x) most = std::max(most, picture.pixelColor(x, 3).saturation());
    return most;
  };
  EXPECT_GT(saturation(), 0);
  Run(CommandId::BlackAndWhite);
  EXPECT_EQ(saturation(), 0);
  Run(CommandId::BlackAndWhite);
  EXPECT_GT(saturation(), 0);
}

TEST_F(Views, SelectionCommandsTakeTheFocusAlong) {
  Open();
  auto& list = session->list;
  Select({0});
  list.SetTag(1, true);
  list.SetTag(2, true);
  const auto focusAfter = [&](CommandId id) { return Run(id), session->TargetIndex(); };
  EXPECT_EQ(focusAfter(CommandId::SelectTagged), 1) << "what is renamed is selected";
  EXPECT_EQ(list.currentIndex, 1);
  EXPECT_EQ(focusAfter(CommandId::SelectAll), 1);
  list.focusIndex = 2;
  EXPECT_EQ(focusAfter(CommandId::SelectTagged), 2);
  EXPECT_EQ(focusAfter(CommandId::InvertSelection), 0);
  EXPECT_EQ(focusAfter(CommandId::SelectNone), 0);
  Run(CommandId::FilmStripSide);
  EXPECT_EQ(focusAfter(CommandId::SelectTagged), 0) << "the picture on show tells what is meant";
}

TEST_F(Views, WheelGoesFromImageToImage) {
  settings::Settings settings;
  settings.catalogue.wraparound = 1;
  Open(std::move(settings));
  Run(CommandId::MainView);
  const auto turn = [&](int notches, Qt::KeyboardModifiers modifiers) {
    Q_EMIT Pane<PictureView>().wheelTurned(notches, modifiers);
    return session->list.currentIndex;
  };
  EXPECT_EQ(turn(-2, Qt::NoModifier), 2);
  EXPECT_EQ(turn(-3, Qt::NoModifier), 0);
  EXPECT_EQ(turn(1, Qt::NoModifier), 4);
  EXPECT_EQ(turn(-1, Qt::ControlModifier), 4) << "turns the image, not the page";
}

TEST_F(Views, WhatIsToComeIsOffAndSaysSo) {
  Open();
  QTest::keyClick(&List(), Qt::Key_Home);
  ASSERT_TRUE(FindCommand(CommandId::ViewActualImage).enabled(session->State()));
  const auto* action = frame->Actions().At(CommandId::ViewActualImage);
  EXPECT_FALSE(action->isEnabled());
  EXPECT_TRUE(action->toolTip().startsWith(QStringLiteral("Not in this version yet: ")));
  Run(CommandId::ViewActualImage);
  EXPECT_TRUE(ask.shown.empty());
  EXPECT_TRUE(frame->Actions().At(CommandId::MainView)->isEnabled());
}

}  // namespace
}  // namespace ml::app
