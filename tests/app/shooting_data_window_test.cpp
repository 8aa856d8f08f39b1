#include "imagefiles/ui/shooting_data_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "imagefiles/ui/shooting_data_tree.h"

namespace ml::imagefiles::ui {
namespace {

using metadata::ShootingGroup;
using Groups = std::vector<metadata::ShootingRows>;

Groups Photo(const std::string& iso) {
  return {{ShootingGroup::Camera, {{"Camera Model", "Sample"}, {"Owner", "M\u00fcller"}}},
          {ShootingGroup::Exposure, {{"Shutter speed", "1/250 sec"}, {"ISO", iso}}},
          {ShootingGroup::Comment, {{"User comments", "one\ntwo"}}}};
}

class ShootingData : public testing::Test {
 protected:
  ShootingData() {
    window.resize(400, 300);
    window.ShowImage(QStringLiteral("a.jpg"), Photo("200"));
    window.show();
    window.Activate();
    static_cast<void>(QTest::qWaitForWindowActive(&window));
    QApplication::clipboard()->setText(QStringLiteral("before"));
  }

  QTreeWidgetItem& Item(const char* text) {
    const auto found = tree.findItems(QLatin1String(text), Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::runtime_error(std::string("no such row: ") + text);
    return *found.first();
  }
  bool Shows(const char* text) {
    return !tree.findItems(QLatin1String(text), Qt::MatchExactly | Qt::MatchRecursive).isEmpty();
  }
  std::string Copied(QWidget& pane) {
    QTest::keyClick(&pane, Qt::Key_C, Qt::ControlModifier);
    return QApplication::clipboard()->text().toStdString();
  }

  ShootingDataWindow window{nullptr};
  ShootingDataTree& tree = *window.findChild<ShootingDataTree*>();
  QLineEdit& filter = *window.findChild<QLineEdit*>();
};

TEST_F(ShootingData, CopiesTheRowsSelectedOrEverything) {
  EXPECT_EQ(Copied(tree),
            "Camera\nCamera Model: Sample\nOwner: M\u00fcller\n\nExposure\nShutter speed: 1/250 sec\nISO: 200\n\n"
            "Comments\nUser comments:\none\ntwo");
  Item("ISO").setSelected(true);
  Item("Owner").setSelected(true);
  EXPECT_EQ(Copied(tree), "Owner: M\u00fcller\nISO: 200");
  Item("Comments").setSelected(true);
  window.findChild<QPushButton*>()->click();
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
            "Camera\nOwner: M\u00fcller\n\nExposure\nISO: 200\n\nComments\nUser comments:\none\ntwo");
}

TEST_F(ShootingData, SearchLeavesWhatHoldsEachWord) {
  tree.collapseItem(&Item("Exposure"));
  filter.setFocus();
  QTest::keyClicks(&filter, QStringLiteral("expo 250"));
  EXPECT_TRUE(Shows("Shutter speed"));
  EXPECT_TRUE(Item("Exposure").isExpanded());
  EXPECT_FALSE(Shows("ISO"));
  EXPECT_EQ(Copied(filter), "Exposure\nShutter speed: 1/250 sec");
  filter.selectAll();
  EXPECT_EQ(Copied(filter), "expo 250");
  window.ShowImage(QStringLiteral("b.jpg"), Photo("400"));
  EXPECT_FALSE(Shows("ISO")) << "another image, the same search";
  QTest::keyClick(&filter, Qt::Key_Escape);
  EXPECT_TRUE(Shows("ISO"));
  EXPECT_FALSE(Item("Exposure").isExpanded()) << "as it was before";
  EXPECT_TRUE(window.isVisible());
}

TEST_F(ShootingData, MarksStayFromImageToImage) {
  window.resize(300, 180);
  tree.collapseItem(&Item("Camera"));
  Item("ISO").setSelected(true);
  tree.verticalScrollBar()->setValue(20);
  const int scrolledTo = tree.verticalScrollBar()->value();
  ASSERT_GT(scrolledTo, 0);
  window.Await(QStringLiteral("b.jpg"));
  EXPECT_EQ(tree.topLevelItemCount(), 0) << "nothing of the image before";
  EXPECT_EQ(window.windowTitle().toStdString(), "b.jpg - Shooting Data");
  EXPECT_EQ(Copied(tree), "before") << "there is nothing to copy";
  window.ShowImage(QStringLiteral("b.jpg"), Photo("400"));
  EXPECT_FALSE(Item("Camera").isExpanded());
  EXPECT_EQ(tree.verticalScrollBar()->value(), scrolledTo);
  EXPECT_EQ(Copied(tree), "ISO: 400");
}

TEST_F(ShootingData, KeepsItsOwnKeysAndCloses) {
  QSignalSpy closed(&window, &ShootingDataWindow::closed);
  const auto isOwn = [&](int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
    event.ignore();
    QApplication::sendEvent(&tree, &event);
    return event.isAccepted();
  };
  EXPECT_TRUE(isOwn(Qt::Key_Escape, Qt::NoModifier));
  EXPECT_TRUE(isOwn(Qt::Key_Down, Qt::ShiftModifier));
  EXPECT_TRUE(isOwn(Qt::Key_A, Qt::ControlModifier));
  EXPECT_FALSE(isOwn(Qt::Key_Right, Qt::ControlModifier)) << "turns the image";
  EXPECT_FALSE(isOwn(Qt::Key_PageDown, Qt::NoModifier)) << "goes to the next image";
  QTest::keyClick(&tree, Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(filter.hasFocus());
  QTest::keyClick(&filter, Qt::Key_Down);
  EXPECT_TRUE(tree.hasFocus());
  QTest::keyClick(&tree, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(closed.count(), 1);
}

TEST_F(ShootingData, RowsAreAsHighAsTheirValues) {
  const auto height = [&](const char* name) { return tree.visualItemRect(&Item(name)).height(); };
  const int oneLine = height("ISO");
  EXPECT_GE(oneLine, 24);
  EXPECT_GT(height("User comments"), oneLine + 8);
  auto groups = Photo(std::string(60, 'x') + " " + std::string(60, 'y'));
  window.ShowImage(QStringLiteral("b.jpg"), groups);
  QApplication::processEvents();
  const int narrow = height("ISO");
  EXPECT_GT(narrow, oneLine + 8);
  window.resize(1800, 300);
  QApplication::processEvents();
  EXPECT_EQ(height("ISO"), oneLine);
}

}  // namespace
}  // namespace ml::imagefiles::ui
