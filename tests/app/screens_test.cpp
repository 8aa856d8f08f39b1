#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "app/icons.h"
#include "app/picture_view.h"
#include "app/summary_pane.h"
#include "app/theme.h"
#include "app/thumbnail_list_fixture.h"
#include "catalogue/ui/directory_tree.h"
#include "imagefiles/ui/histogram_panel.h"
#include "imagefiles/ui/shooting_data_window.h"
#include "metadata/shooting_rows.h"
#include "support/temp_dir.h"

/// Pictures of the widgets for people to look at, in screens/ of the build folder.
namespace ml {
namespace {

using test::ThumbnailList;

void Save(QWidget& widget, const QString& name) {
  QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/../screens"));
  ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
  const auto scale = qRound(widget.devicePixelRatioF());
  const auto file = QStringLiteral("widgets-%1-%2x.png").arg(name).arg(scale);
  EXPECT_TRUE(widget.grab().save(folder.filePath(file)));
}

std::vector<std::string> MixedNames() {
  return {"IMG_0041.CRW",
          "IMG_0042.jpg",
          "tall_0043.CRW",
          "bad_0044.TIF",
          "viewing_0045.tif",
          "sound_0046.jpg",
          "DSC_0001.NEF",
          "drawing.png",
          "layers.psd",
          "clip.avi",
          "a long name of a picture taken at the sea.jpg",
          "scan.jp2",
          "old.gif",
          "tall_0049.jpg",
          "IMG_0050.CRW",
          "caf\xe9.jpg"};
}

void MarkSome(catalogue::ImageList& list) {
  for (const int i : {1, 2, 4, 9}) list.SetTag(i, true);
  for (const int i : {1, 6, 7}) list.marks[static_cast<std::size_t>(i)].selected = true;
  list.focusIndex = 6;
}

class Screens : public testing::TestWithParam<app::Scheme> {
 protected:
  Screens() { app::ApplyTheme(*qApp, GetParam()); }
  ~Screens() override { app::ApplyTheme(*qApp, app::Scheme::Light); }
  static QString Named(const char* name) {
    return QLatin1String(name) + QLatin1String(GetParam() == app::Scheme::Dark ? "-dark" : "-light");
  }
};

TEST_P(Screens, Thumbnails) {
  for (const char* colours : {"gray", "white", "black"}) {
    ThumbnailList shown(MixedNames(), {600, 400});
    MarkSome(shown.list);
    shown.view->SetColours(colours);
    shown.view->MarksChanged();
    shown.WaitForAll();
    Save(*shown.view, Named("thumbnails") + QLatin1Char('-') + QLatin1String(colours));
  }
}

TEST_P(Screens, Strip) {
  ThumbnailList shown(MixedNames(), {700, 130});
  shown.view->SetArrangement(catalogue::ui::ThumbnailListView::Arrangement::Columns);
  MarkSome(shown.list);
  shown.view->MarksChanged();
  shown.view->clearFocus();
  shown.WaitForAll();
  Save(*shown.view, Named("strip"));
}

/// The levels of a bright sky over a dark wood, more or less.
imagefiles::Histogram Landscape() {
  imagefiles::Histogram counts;
  for (int i = 0; i < 60'000; ++i) {
    const double wave = (1 + std::sin(i * 0.37)) * (1 + std::cos(i * 0.0231)) / 4;
    const double level = i % 3 == 0 ? 170 + 90 * wave : 20 + 110 * wave;
    const auto cut = [](double value) { return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0)); };
    counts.Add(cut(level * 0.9), cut(level), cut(level * 1.1 - 8));
  }
  return counts;
}

TEST_P(Screens, Histogram) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  for (const auto& counts : {Landscape(), imagefiles::Histogram{}}) {
    auto* panel = new imagefiles::ui::HistogramPanel;
    panel->SetHistogram(counts, {});
    layout->addWidget(panel);
  }
  auto* narrow = new imagefiles::ui::HistogramPanel;
  narrow->SetHistogram(Landscape(), {.blue = false});
  narrow->setFixedSize(160, narrow->heightForWidth(160));
  layout->addWidget(narrow);
  window.resize(300, 10);
  window.show();
  QTest::qWait(50);
  Save(window, Named("histogram"));
}

metadata::ExifData Shot() {
  metadata::ExifData data;
  data.displayPath = "/shots/2003-10-05/IMG_0042.CRW", data.fileSize = 2'812'345, data.imageNumber = 1000042;
  data.make = "Tarnwick", data.model = "Sample 10", data.bodySerial = "0560018150", data.owner = "M\xfcller";
  data.dateTime = data.dateTimeOriginal = "2003:10:05 11:07:32", data.imageWidth = 3072, data.imageHeight = 2048;
  data.shutterSpeed = "1/250", data.aperture = "2.8", data.exposureMode = "Av", data.iso = "200";
  data.exposureCompensation = -1.5, data.meteringMode = "Center-weighted average", data.driveMode = "Single-frame";
  data.focalLength = 28, data.lensMinFocal = 17, data.lensMaxFocal = 40, data.afMode = "One-shot AF";
  data.flash = "Off", data.whiteBalance = "Daylight", data.colorMatrix = 4, data.saturation = "Normal";
  data.customFunctions = "Custom Functions:\nCFn 4: Shutter release: AE lock; AE button: AF";
  data.comment = "The wood behind the house,\nin the last light of the day.";
  data.iptc = {{2, 25, "wood"},
               {2, 120, "A caption that is so long that it goes on over several lines of the window."}};
  return data;
}

TEST_P(Screens, ShootingData) {
  imagefiles::ui::ShootingDataWindow window(nullptr);
  window.resize(400, 520);
  window.show();
  Save(window, Named("shooting-data-none"));
  auto shot = Shot();
  window.ShowImage(QStringLiteral("IMG_0042.CRW"), metadata::ListShootingData(shot, {}));
  QTest::qWait(50);
  Save(window, Named("shooting-data"));
  auto& tree = *window.findChild<QTreeWidget*>();
  tree.collapseItem(tree.topLevelItem(0));
  tree.topLevelItem(1)->child(1)->setSelected(true);
  tree.scrollToBottom();
  QTest::qWait(50);
  Save(window, Named("shooting-data-end"));
  window.findChild<QLineEdit*>()->setText(QStringLiteral("ca"));
  QTest::qWait(50);
  Save(window, Named("shooting-data-search"));
}

TEST_P(Screens, EmptyList) {
  ThumbnailList shown({}, {500, 300});
  shown.view->SetEmptyText(QStringLiteral("Open a directory, or drop one here"));
  Save(*shown.view, Named("empty"));
}

TEST_P(Screens, TreeToolbarPictureSummary) {
  const test::TempDir dir;
  for (const char* name : {"shots/2003-10-04/a", "shots/2003-10-05/b", "shots/caf\xe9/c", "shots/2003-10-06/d"})
    dir.Write(name, "");
  QWidget window;
  auto* toolbar = new QToolBar;
  toolbar->setIconSize({24, 24});
  for (const char* name : {"folder-open",
                           "go-up",
                           "",
                           "view-main",
                           "view-thumbnails",
                           "view-film-strip",
                           "view-film-strip-below",
                           "",
                           "tag",
                           "object-rotate-left",
                           "object-rotate-right",
                           "",
                           "go-previous",
                           "go-next",
                           "",
                           "view-sort-ascending",
                           "view-refresh",
                           "edit-delete",
                           "document-save-as",
                           "edit-select-all",
                           "edit-select-none",
                           "",
                           "thumbnails-small",
                           "thumbnails-large",
                           "thumbnails-extra-large",
                           "",
                           "help-contents",
                           "help-about",
                           "application-exit"}) {
    if (*name == '\0') {
      toolbar->addSeparator();
    } else {
      toolbar->addAction(app::CommandIcon(QLatin1String(name)), QLatin1String(name))
          ->setEnabled(QLatin1String(name) != QLatin1String("go-next"));
    }
  }
  auto* tree = new catalogue::ui::DirectoryTree;
  auto* picture = new app::PictureView;
  auto* empty = new app::PictureView;
  auto* summary = new app::SummaryPane;
  empty->SetMessage(QStringLiteral("Unable to read the image:\n/shots/IMG_0042.JPG"));
  summary->SetText("IMG_0042.CRW\n2003-10-05 11:07:32\n1/250 s, f/2.8, ISO 200\n28 mm\n3072 x 2048");
  picture->SetPicture(test::Gradient(420, 280));
  auto* right = new QSplitter(Qt::Vertical);
  right->addWidget(picture);
  right->addWidget(empty);
  auto* left = new QSplitter(Qt::Vertical);
  left->addWidget(tree);
  left->addWidget(summary);
  auto* across = new QSplitter;
  across->addWidget(left);
  across->addWidget(right);
  auto* icon = new QLabel;
  icon->setPixmap(app::ApplicationIcon().pixmap(QSize(64, 64), window.devicePixelRatioF()));
  auto* layout = new QVBoxLayout(&window);
  layout->addWidget(toolbar);
  layout->addWidget(across, 1);
  layout->addWidget(icon);
  window.resize(900, 640);
  window.show();
  across->setSizes({240, 640});
  tree->SetDirectory(dir / "shots/2003-10-05");
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree->Directory() == dir / "shots/2003-10-05"; }));
  tree->setFocus();
  QTest::qWait(50);
  Save(window, Named("panes"));
}

INSTANTIATE_TEST_SUITE_P(All, Screens, testing::Values(app::Scheme::Light, app::Scheme::Dark),
                         [](const auto& c) { return c.param == app::Scheme::Dark ? "Dark" : "Light"; });

}  // namespace
}  // namespace ml
