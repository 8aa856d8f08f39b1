#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <thread>

#include "app/icons.h"
#include "app/picture_view.h"
#include "app/theme.h"
#include "app/thumbnail_list_fixture.h"
#include "catalogue/ui/thumbnail_colours.h"
#include "platform/ui/accent.h"
#include "platform/ui/byte_line.h"
#include "platform/ui/file_filter.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/uri_list.h"

namespace ml {
namespace {

using platform::ui::ContrastRatio;

TEST(UriList, HoldsLocalPathsByTheirBytes) {
  using Paths = std::vector<std::string>;
  struct Case {
    const char* text;
    Paths paths;
  };
  for (const auto& c : {Case{"# from a file manager\r\nfile:///a/%FFb%0Ac\r\n",
                             {"/a/\xff"
                              "b\nc"}},
                        Case{"file://localhost/x\nFILE:/y", {"/x", "/y"}},
                        Case{"http://host/x\r\nfile://elsewhere.invalid/x\r\nfile:relative", {}},
                        Case{"file:///bad%zz\nfile:///cut%4\nfile:///nul%00", {}}}) {
    EXPECT_EQ(platform::ui::LocalPathsOfUriList(c.text), c.paths) << c.text;
  }
  const Paths paths{"/shots/a b%#?.jpg", "/shots/caf\xe9.jpg", "/shots/\xc3\xa9\"<.crw"};
  const auto text = platform::ui::UriListOf(paths);
  EXPECT_TRUE(text.starts_with("file:///shots/a%20b%25%23%3F.jpg\r\n")) << text;
  EXPECT_EQ(platform::ui::LocalPathsOfUriList(text), paths);
}

TEST(FileFilter, MatchesAnyCaseAndNamesPatternsOnce) {
  const auto filters = platform::ui::NameFilters("JPEG images (*.jpg;*.jpe)|*.jpg;*.jpe|All files (*.*)|*.*||");
  ASSERT_EQ(filters.size(), 2);
  EXPECT_EQ(filters[0], QStringLiteral("JPEG images (*.[jJ][pP][gG] *.[jJ][pP][eE])"));
  EXPECT_EQ(filters[1], QStringLiteral("All files (*)"));
  EXPECT_TRUE(QDir::match(QStringLiteral("*.[jJ][pP][gG]"), QStringLiteral("IMG_1.Jpg")));
}

TEST(Theme, IsNeutralAndReadable) {
  for (const auto scheme : {app::Scheme::Light, app::Scheme::Dark}) {
    const auto palette = app::ThemePalette(scheme);
    const auto colour = [&](QPalette::ColorRole role) { return palette.color(QPalette::Active, role); };
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button, QPalette::Text,
                            QPalette::Mid, QPalette::Dark, QPalette::Light, QPalette::ToolTipBase}) {
      EXPECT_EQ(colour(role).saturation(), 0) << role;
    }
    struct Pair {
      QPalette::ColorRole text, ground;
    };
    for (const auto& pair :
         {Pair{QPalette::WindowText, QPalette::Window}, Pair{QPalette::Text, QPalette::Base},
          Pair{QPalette::Text, QPalette::AlternateBase}, Pair{QPalette::ButtonText, QPalette::Button},
          Pair{QPalette::PlaceholderText, QPalette::Base}, Pair{QPalette::HighlightedText, QPalette::Highlight},
          Pair{QPalette::Link, QPalette::Base}, Pair{QPalette::ToolTipText, QPalette::ToolTipBase}}) {
      EXPECT_GE(ContrastRatio(colour(pair.text), colour(pair.ground)), 4.5) << pair.text << " on " << pair.ground;
    }
  }
  EXPECT_GE(ContrastRatio(app::PictureGroundText(), app::PictureGround()), 4.5);
  EXPECT_LT(app::PictureGround().red(), 128);
}

TEST(Accent, StandsOutFromEverySchemeOfTheThumbnails) {
  for (const char* scheme : {"white", "gray", "black"}) {
    const auto ground = catalogue::ui::SchemeColours(scheme).backgroundColour;
    EXPECT_GE(ContrastRatio(platform::ui::AccentFor(ground), ground), 3) << scheme;
  }
}

TEST(Icons, AreDrawnInTheColourOfTheText) {
  for (const char* name : {"folder-open", "go-up", "view-main", "view-thumbnails", "view-film-strip", "tag",
                           "object-rotate-left", "go-previous", "view-sort-ascending", "view-refresh", "edit-delete",
                           "thumbnails-small", "document-save-as", "help-about"}) {
    const QImage picture = app::CommandIcon(QLatin1String(name)).pixmap(QSize(24, 24), 1.0).toImage();
    ASSERT_FALSE(picture.isNull()) << name;
    int solid = 0;
    for (int i = 0; i < 24 * 24; ++i) {
      const QColor pixel = picture.pixelColor(i % 24, i / 24);
      if (pixel.alpha() < 180) continue;
      ++solid;
      EXPECT_NEAR(pixel.red(), qApp->palette().color(QPalette::ButtonText).red(), 2) << name;
    }
    EXPECT_GT(solid, 10) << name;
  }
  EXPECT_TRUE(app::CommandIcon(QStringLiteral("no-such-icon")).isNull());
  EXPECT_FALSE(app::ApplicationIcon().pixmap(64).isNull());
}

struct PictureOnScreen {
  app::PictureView view;
  QString told;
  PictureOnScreen() {
    QObject::connect(&view, &app::PictureView::colourUnderMouse, [this](const QString& text) { told = text; });
    view.resize(300, 200);
    view.show();
    static_cast<void>(QTest::qWaitForWindowExposed(&view));
  }
  QString At(QPoint place) {
    QMouseEvent move(QEvent::MouseMove, place, view.mapToGlobal(place), Qt::NoButton, {}, {});
    QApplication::sendEvent(&view, &move);
    return told;
  }
};

TEST(PictureView, TellsTheColourUnderTheMouse) {
  PictureOnScreen shown;
  const double ratio = shown.view.devicePixelRatioF();
  auto picture = imaging::MakePixelBuffer(static_cast<int>(100 * ratio), static_cast<int>(50 * ratio));
  picture.Row(0)[0] = std::byte(7);    // red of the first pixel
  picture.Row(0)[1] = std::byte(110);  // green
  shown.view.SetPicture(std::move(picture));
  EXPECT_EQ(shown.At({100, 75}), QStringLiteral("RGB:   7,110,  0")) << "the picture stands in the middle";
  EXPECT_EQ(shown.At({199, 124}), QStringLiteral("RGB:   0,  0,  0"));
  EXPECT_EQ(shown.At({200, 124}), QString());
  EXPECT_EQ(shown.At({99, 75}), QString());
  shown.view.Clear();
  EXPECT_EQ(shown.At({150, 100}), QString());
}

TEST(PictureView, NeverEnlargesAndFitsWhatIsTooLarge) {
  PictureOnScreen shown;
  const double ratio = shown.view.devicePixelRatioF();
  shown.view.SetPicture(test::Gradient(20, 10));
  const auto rgb = [&](QPoint at) { return shown.view.grab().toImage().pixel(at * ratio); };
  const QRgb ground = rgb({2, 2});
  EXPECT_EQ(rgb({120, 100}), ground);
  EXPECT_NE(rgb({150, 100}), ground);
  shown.view.SetPicture(test::Gradient(static_cast<int>(600 * ratio), static_cast<int>(300 * ratio)));
  EXPECT_NE(rgb({2, 100}), ground);
  EXPECT_EQ(rgb({150, 10}), ground) << "300 x 150 in the middle";
}

TEST(PictureView, CollectsSmallTurnsOfTheWheel) {
  PictureOnScreen shown;
  QSignalSpy turned(&shown.view, &app::PictureView::wheelTurned);
  for (int i = 0; i < 5; ++i) {
    QWheelEvent wheel({10, 10}, {10, 10}, {}, {0, -60}, {}, Qt::ShiftModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&shown.view, &wheel);
  }
  ASSERT_EQ(turned.count(), 2);
  EXPECT_EQ(turned[0][0].toInt(), -1);
}

/// Presses a button of the box that will be open.
void AnswerNextBox(const QString& label, QString* seen = nullptr) {
  QTimer::singleShot(50, [label, seen] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    if (seen != nullptr) *seen = box->text();
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    for (auto* button : box->buttons()) {
      if (button->text().remove(QLatin1Char('&')) == label) return button->click();
    }
    ADD_FAILURE() << "no button " << label.toStdString();
    box->reject();
  });
}

TEST(QtInteraction, AsksFromAnotherThread) {
  platform::ui::QtInteraction ask(nullptr);
  platform::Button answer = platform::Button::Cancel;
  QString seen;
  AnswerNextBox(QStringLiteral("Yes"), &seen);
  std::atomic<bool> done = false;
  std::thread job([&] {
    answer = ask.ask({.text = "Delete <b>caf\xe9</b>?", .buttons = platform::Buttons::YesNo});
    done = true;
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }));
  job.join();
  EXPECT_EQ(answer, platform::Button::Yes);
  EXPECT_EQ(seen, QStringLiteral("Delete <b>caf\u00e9</b>?"));
}

TEST(QtInteraction, OffersEveryAnswerToAFileInTheWay) {
  using enum platform::FileExistsAnswer;
  platform::ui::QtInteraction ask(nullptr);
  struct Case {
    const char* label;
    platform::FileExistsAnswer answer;
  };
  for (const auto& c : {Case{"Overwrite", Overwrite}, Case{"Overwrite All", OverwriteAll}, Case{"Skip", Skip},
                        Case{"Skip All", SkipAll}, Case{"Save As...", SaveAs}, Case{"Cancel", Cancel}}) {
    AnswerNextBox(QLatin1String(c.label));
    EXPECT_EQ(ask.fileExists("/x/y.tif"), c.answer) << c.label;
  }
  QTimer::singleShot(50, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  EXPECT_EQ(ask.fileExists("/x/y.tif"), Cancel);
  QTimer::singleShot(50, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
  EXPECT_EQ(ask.fileExists("/x/y.tif"), Skip) << "a hasty Return overwrites nothing";
}

TEST(DialogStart, IsTheNearestPlaceThatTheToolkitCanName) {
  const std::pair<std::string, QString> starts[] = {
      {"/a/x.tag", "/a/x.tag"}, {"/a/caf\xe9/b/", "/a/"}, {"\xe9", ""}, {"", ""}};
  for (const auto& [path, start] : starts) EXPECT_EQ(platform::ui::DialogStart(path), start) << path;
}

TEST(ByteLine, GivesWhatItShows) {
  const std::string latin = "/caf\xe9";
  platform::ui::ByteLine line(latin);
  EXPECT_EQ(line.Bytes(), latin);
  QTest::keyClicks(&line, QStringLiteral("s"));
  EXPECT_EQ(line.Bytes(), "/caf\xc3\xa9s");
  line.setText(QStringLiteral("/set/by/code"));
  EXPECT_EQ(line.Bytes(), "/set/by/code");
  line.SetBytes(latin + "/\xe9");
  const auto eAcute = QString(QChar(0xe9));
  const std::pair<QString, std::string> edited[] = {{"/caf%1/%1/new", latin + "/\xe9/new"},
                                                    {"/caf%1/%1n", latin + "/\xc3\xa9n"},
                                                    {"/caf%1/", latin + "/"},
                                                    {"/caf%1", latin},
                                                    {"/c", "/c"},
                                                    {"", ""}};
  for (const auto& [text, bytes] : edited) {
    line.setText(text.contains(QLatin1Char('%')) ? text.arg(eAcute) : text);
    EXPECT_EQ(line.Bytes(), bytes) << bytes;
  }
}

}  // namespace
}  // namespace ml
