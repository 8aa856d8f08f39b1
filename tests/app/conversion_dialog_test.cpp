#include "rawconvert/ui/conversion_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <optional>

#include "app/theme.h"
#include "rawconvert/resize_box.h"
#include "rawconvert/ui/number_field.h"
#include "support/fakes.h"
#include "support/temp_dir.h"

namespace ml::rawconvert::ui {
namespace {

/// The dialog over one image of a camera, without showing it.
struct Opened {
  explicit Opened(const std::string& model, bool batch = false, const ConversionChoice& choice = {},
                  const std::string& path = "/shots/a.crw", int effect = 0) {
    exif.model = model;
    exif.isEos1DRaw = model.find("1D") != std::string::npos;
    exif.imageWidth = 3000;
    exif.imageHeight = 2000;
    exif.pictureEffectCode = effect;
    exif.whiteBalance = "Color temp=5200";
    family = FamilyOf(path, exif);
    start = choice;
    OpenChoice(start, family, exif);
    dialog.emplace(ConversionQuestion{.path = path,
                                      .exif = exif,
                                      .family = family,
                                      .batch = batch,
                                      .count = 24,
                                      .profiles = table,
                                      .finder = imagefiles::ProfileFinder({{profiles.Path(), false}}, profiles.Path()),
                                      .chooseDirectory = {}},
                   start, ask);
  }
  template <class Widget>
  Widget* Find(const char* name) const {
    return dialog->findChild<Widget*>(QLatin1String(name));
  }
  /// The fields of the development: '+' if it can be used, '-' if not.
  std::string Fields() const {
    std::string text;
    for (const auto* name : {"whiteBalance", "colourTemperature", "exposure", "contrast", "saturation", "sharpness",
                             "tone", "photoEffect", "colourMatrix", "sharpnessLevel", "sharpnessObject", "colourSpace",
                             "falseColour", "falseResolution", "sameBalance"}) {
      const auto* field = Find<QWidget>(name);
      if (field != nullptr) text += std::string(field->isEnabledTo(&*dialog) ? "+" : "-") + name + " ";
    }
    return text;
  }
  void Press(const char* text) {
    for (auto* button : dialog->findChildren<QPushButton*>()) {
      if (button->text() == QLatin1String(text)) return button->click();
    }
    ADD_FAILURE() << "no button " << text;
  }

  test::TempDir profiles;
  metadata::ExifData exif;
  CameraFamily family;
  RawProfileTable table;
  ConversionChoice start;
  test::ScriptedInteraction ask;
  std::optional<ConversionDialog> dialog;
};

TEST(ConversionDialogTest, EachCameraHasTheFieldsThatItKnows) {
  struct Case {
    const char* model;
    const char* path;
    Method method;
    int effect;  ///< of the file; the dialog has "as shot"
    const char* fields;
    int methods;
  };
  const Case cases[] = {
      {"Canon EOS-1D", "/a.tif", Method::Normal, 0,
       "+whiteBalance -colourTemperature +exposure -contrast -saturation -sharpness +colourMatrix +sharpnessLevel "
       "+sharpnessObject +falseColour +sameBalance ",
       2},
      {"Canon EOS-1DS", "/a.tif", Method::Normal, 0,
       "+whiteBalance -colourTemperature +exposure -contrast -saturation -sharpness +colourMatrix +sharpnessLevel "
       "+sharpnessObject +falseColour +falseResolution +sameBalance ",
       2},
      {"Canon EOS D60", "/a.crw", Method::Normal, 0,
       "+whiteBalance +exposure +contrast +saturation +sharpness +tone +falseColour +sameBalance ", 3},
      {"Canon EOS 10D", "/a.crw", Method::Linear, 0,
       "+whiteBalance -colourTemperature +exposure -contrast -saturation -sharpness +tone +colourSpace +falseColour "
       "+sameBalance ",
       3},
      {"Canon EOS D30", "/a.crw", Method::Combined, 0,
       "+whiteBalance +contrast +saturation -sharpness +falseColour +sameBalance ", 3},
      {"Canon PowerShot G3", "/a.crw", Method::Linear, 1,
       "+whiteBalance -contrast -saturation -sharpness +photoEffect +falseColour +sameBalance ", 3},
      {"Canon PowerShot S45", "/a.crw", Method::Normal, 4,
       "-whiteBalance -contrast -saturation -sharpness +photoEffect +falseColour +sameBalance ", 3},
      {"Canon PowerShot S45", "/a.crw", Method::Normal, 6,
       "+whiteBalance +contrast +saturation +sharpness +photoEffect +falseColour +sameBalance ", 3},
      {"Canon PowerShot G1", "/a.crw", Method::Normal, 0,
       "+whiteBalance +contrast +saturation +sharpness +falseColour +sameBalance ", 3},
      {"NIKON D1", "/a.nef", Method::Normal, 0, "+whiteBalance +saturation +sameBalance ", 2},
  };
  for (const auto& c : cases) {
    ConversionChoice choice;
    choice.settings.method = c.method;
    choice.values.photoEffect = -1;
    const Opened opened(c.model, false, choice, c.path, c.effect);
    EXPECT_EQ(opened.Fields(), c.fields) << c.model;
    EXPECT_EQ(opened.Find<QComboBox>("method")->count(), c.methods) << c.model;
  }
}

TEST(ConversionDialogTest, WhatIsShownComesBack) {
  ConversionChoice choice;
  choice.settings.method = Method::Combined;
  choice.settings.levelsStyle = LevelsStyle::Manual;
  choice.settings.blackPoint = 7;
  choice.settings.midPoint = 1.25;
  choice.settings.postProcess = choice.settings.resize = choice.settings.sharpen = 1;
  choice.settings.resizeUnits = ResizeUnits::Centimetres;
  choice.settings.resizeWidth = 1234;
  choice.settings.resizeHeight = 567;
  choice.settings.sharpenMethod = SharpenMethod::HqStyle;
  choice.settings.noiseBlending = 95;
  choice.values = {
      .contrast = 2, .saturation = -2, .sharpness = 3, .tone = 2, .exposureCompensation = -13, .customPoint = {}};
  choice.format = OutputFormat::Png16;
  choice.quality = 7;
  choice.resolution = 300;
  choice.directory = {false, "../caf\xe9"};
  choice.appendMethodLetter = false;
  const Opened opened("Canon EOS 10D", false, choice);
  const auto& after = opened.dialog->Choice();
  EXPECT_EQ(after.settings, opened.start.settings) << "also the 3 of the white balance, and the box to the pixel";
  EXPECT_EQ(after.values, opened.start.values);
  EXPECT_EQ(after.format, OutputFormat::Png16);
  EXPECT_EQ(after.quality, 7);
  EXPECT_EQ(after.directory.directory, "../caf\xe9");
  EXPECT_EQ(opened.Find<QLabel>("example")->text().toStdString(), "/caf\u00e9/a.png");
  EXPECT_EQ(opened.Find<QLabel>("result")->text().toStdString(), "(850 x 567 pixels)");
  EXPECT_EQ(opened.Find<QComboBox>("whiteBalance")->currentText().toStdString(), "As shot (CT:5200)");
}

TEST(ConversionDialogTest, BatchesAreNotPostProcessed) {
  Opened opened("Canon EOS D60", true);
  EXPECT_EQ(opened.dialog->windowTitle().toStdString(), "Batch Convert RAW Files");
  EXPECT_EQ(opened.Find<QCheckBox>("postProcess"), nullptr);
  EXPECT_EQ(opened.Find<QCheckBox>("sameBalance"), nullptr);
  opened.Press("&Convert 24 Images");
  EXPECT_EQ(opened.dialog->result(), QDialog::Accepted);
}

TEST(ConversionDialogTest, WrongValuesAreToldAndMended) {
  struct Case {
    const char* field;
    double typed;
    LevelsStyle style;
    const char* sentence;
    double mended;
  };
  const Case cases[] = {
      {"midPoint", 10, LevelsStyle::Manual, "The mid point must be a value between 0.01 and 9.99", 1},
      {"blackPercent", 101, LevelsStyle::Auto, "Black point percentage must be a value between 0% and 100%.", 0},
      {"whitePercent", -1, LevelsStyle::Auto, "White point percentage must be a value between 0% and 100%.", 40},
      {"blackPercent", 70, LevelsStyle::Auto,
       "Black point percentage plus white point percentage must be 100% or less.", 70},
      {"midPoint", 10, LevelsStyle::Auto, nullptr, 10},
      {"quality", 101, LevelsStyle::None, "Takes a number from 0 to 100.", 95},
  };
  for (const auto& c : cases) {
    ConversionChoice choice;
    choice.settings.postProcess = 1;
    choice.settings.levelsStyle = c.style;
    choice.settings.whitePointPercent = 40;
    Opened opened("Canon EOS D60", false, choice);
    auto* field = opened.Find<NumberField>(c.field);
    field->setValue(c.typed);
    opened.Press("&Convert");
    EXPECT_EQ(opened.ask.shown.empty() ? "" : opened.ask.shown.front().text, c.sentence == nullptr ? "" : c.sentence);
    EXPECT_EQ(opened.dialog->result() == QDialog::Accepted, c.sentence == nullptr) << c.field;
    EXPECT_DOUBLE_EQ(field->value(), c.mended) << c.field;
  }
}

TEST(ConversionDialogTest, BlackAndWhitePointPushEachOther) {
  ConversionChoice choice;
  choice.settings.postProcess = 1;
  choice.settings.levelsStyle = LevelsStyle::Manual;
  choice.settings.whitePoint = 100;
  Opened opened("Canon EOS D60", false, choice);
  const auto enter = [&](const char* name, int value) {
    auto* field = opened.Find<NumberField>(name);
    field->setValue(value);
    Q_EMIT field->editingFinished();
    const auto& settings = opened.dialog->Choice().settings;
    return std::pair(settings.blackPoint, settings.whitePoint);
  };
  EXPECT_EQ(enter("blackPoint", 98), std::pair(98, 102));
  EXPECT_EQ(enter("blackPoint", 300), std::pair(251, 255));
  EXPECT_EQ(enter("whitePoint", 0), std::pair(0, 4));
}

TEST(ConversionDialogTest, CameraOfEightBitsIsWarnedAbout) {
  for (const auto answer : {platform::Button::No, platform::Button::Yes}) {
    ConversionChoice choice;
    choice.format = OutputFormat::Tiff16;
    Opened opened("Canon PowerShot Pro90 IS", false, choice);
    opened.ask.buttons = {answer};
    opened.Press("&Convert");
    ASSERT_EQ(opened.ask.shown.size(), 1U);
    EXPECT_EQ(opened.ask.shown.front().text.substr(0, 37), "WARNING: The Canon PowerShot Pro90 IS");
    EXPECT_EQ(opened.dialog->result() == QDialog::Accepted, answer == platform::Button::Yes);
  }
}

TEST(ConversionDialogTest, ColourTemperatureGoesToHundreds) {
  Opened opened("Canon EOS 10D");
  opened.Find<QComboBox>("whiteBalance")->setCurrentText(QStringLiteral("Color temp"));
  auto* kelvin = opened.Find<NumberField>("colourTemperature");
  EXPECT_TRUE(kelvin->isEnabledTo(&*opened.dialog));
  for (const auto& [typed, kept] : {std::pair(2849, 2800), {2851, 2900}, {12000, 10000}}) {
    kelvin->setValue(typed);
    Q_EMIT kelvin->editingFinished();
    EXPECT_EQ(kelvin->Whole(), kept);
    EXPECT_EQ(opened.dialog->Choice().settings.colourTemperature10D, kept);
  }
}

TEST(ConversionDialogTest, ProfileFollowsTheColourSpace) {
  ConversionChoice choice;
  choice.profiles = {"/p/mine.icc", ""};
  Opened opened("Canon EOS 10D", false, choice);
  opened.profiles.Write("sRGB Color Space Profile.icm", "");
  opened.table.flags["Canon EOS 10D"] = profile_flag::kEmbedNormal | profile_flag::kAutoSrgb;
  const auto shown = [&](const char* list, const char* text) {
    opened.Find<QComboBox>(list)->setCurrentText(QLatin1String(text));
    return opened.Find<QLabel>("profile")->text().toStdString();
  };
  EXPECT_EQ(shown("colourSpace", "AdobeRGB"), "mine.icc");
  EXPECT_EQ(shown("colourSpace", "sRGB"), "sRGB Color Space Profile.icm");
  EXPECT_EQ(shown("method", "Linear"), "<Disabled in Preferences>");
  EXPECT_EQ(shown("format", "JPEG 2000 8-bit"), "<none>");
}

TEST(ResizeBoxTest, KeepsPixelsInAnyUnit) {
  EXPECT_DOUBLE_EQ(BoxEdgeIn(ResizeUnits::Inches, 1000, 240), 4.17);
  EXPECT_EQ(BoxPixelsOf(ResizeUnits::Inches, 10, 300), 3000);
  EXPECT_EQ(BoxPixelsOf(ResizeUnits::Centimetres, 2.54, 300), 300);
  EXPECT_EQ(BoxPixelsOf(ResizeUnits::Inches, 100, 999), 15000);
  EXPECT_EQ(BoxPixelsOf(ResizeUnits::Inches, 0, 240), 1);
}

/// Pictures for people to look at, in screens/ of the build folder.
TEST(ConversionDialogScreens, OfEachFamily) {
  struct Case {
    const char* name;
    const char* model;
    const char* path;
    bool batch;
  };
  QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/../screens"));
  ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
  for (const auto scheme : {app::Scheme::Light, app::Scheme::Dark}) {
    app::ApplyTheme(*qApp, scheme);
    for (const auto& c : {Case{"10d", "Canon EOS 10D", "/shots/IMG_0001.crw", false},
                          Case{"1ds", "Canon EOS-1DS", "/shots/IMG_0001.tif", true},
                          Case{"nef", "NIKON D1", "/shots/DSC_0001.nef", true}}) {
      ConversionChoice choice;
      choice.settings.postProcess = 1;
      choice.settings.levelsStyle = LevelsStyle::Manual;
      choice.settings.midPoint = 12;
      Opened opened(c.model, c.batch, choice, c.path);
      auto* tabs = opened.dialog->findChild<QTabWidget*>();
      opened.dialog->show();
      for (int page = 0; page < tabs->count(); ++page) {
        tabs->setCurrentIndex(page);
        QTest::qWait(1);
        const auto file = QStringLiteral("convert-%1-%2-%3-%4x.png")
                              .arg(QLatin1String(c.name))
                              .arg(page)
                              .arg(QLatin1String(scheme == app::Scheme::Light ? "light" : "dark"))
                              .arg(qRound(opened.dialog->devicePixelRatioF()));
        EXPECT_TRUE(opened.dialog->grab().save(folder.filePath(file)));
      }
    }
  }
  app::ApplyTheme(*qApp, app::Scheme::Light);
}

}  // namespace
}  // namespace ml::rawconvert::ui
