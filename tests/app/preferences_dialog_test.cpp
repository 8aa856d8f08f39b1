#include "app/preferences/ui/preferences_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTest>
#include <algorithm>

#include "app/preferences/preference_pages.h"
#include "app/preferences/ui/search_line.h"

namespace ml::app {
namespace {

class Preferences : public testing::Test {
 protected:
  /// The window over `settings`, on screen.
  void Open() {
    dialog = std::make_unique<CPreferencesDialog>(
        settings,
        FieldHelp{[this](const std::string& start) {
                    browsedFrom = start;
                    return chosen;
                  },
                  [this](TextForm form, const std::string& format) { return Example(form, format); }},
        nullptr);
    QObject::connect(dialog.get(), &CPreferencesDialog::applied, dialog.get(),
                     [this](const settings::Settings& edited) { applied.push_back(edited); });
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
  }

  template <class Widget>
  Widget* Field(const char* key) {
    auto* field = dialog->findChild<Widget*>(QLatin1String(key));
    if (!field) throw std::runtime_error(std::string("no such field: ") + key);
    return field;
  }
  QPushButton* Button(QDialogButtonBox::StandardButton which) {
    return dialog->findChild<QDialogButtonBox*>()->button(which);
  }
  QPushButton* Restore() {
    for (auto* button : dialog->findChildren<QPushButton*>()) {
      if (button->text() == QLatin1String("Restore &Defaults")) return button;
    }
    throw std::runtime_error("no button for the defaults");
  }
  void Choose(const char* key, int index) {
    auto* box = Field<QComboBox>(key);
    box->setCurrentIndex(index);
    Q_EMIT box->activated(index);
  }
  bool IsShown(const QString& text) {
    return std::ranges::any_of(dialog->findChildren<QLabel*>(),
                               [&](const auto* label) { return label->isVisible() && label->text() == text; });
  }
  std::optional<std::string> Example(TextForm form, const std::string& format) const {
    if (!hasImage) return std::nullopt;
    return (form == TextForm::Line ? "line: " : "lines: ") + format;
  }
  QAction* InsertAction(const char* key, const char* token) {
    auto* row = Field<QLineEdit>(key)->parentWidget();
    for (auto* action : row->findChildren<QAction*>()) {
      if (action->text().endsWith(QLatin1Char('\t') + QLatin1String(token))) return action;
    }
    return nullptr;
  }
  QListWidget* Titles() { return dialog->findChild<QListWidget*>(); }
  SearchLine* Search() { return dialog->findChild<SearchLine*>(); }

  settings::Settings settings = settings::MakeDefaultSettings();
  std::unique_ptr<CPreferencesDialog> dialog;
  std::vector<settings::Settings> applied;
  std::optional<std::string> chosen;
  std::string browsedFrom;
  bool hasImage = true;
};

TEST_F(Preferences, NoPageIsCutAtTheSideInTheSmallestWindow) {
  Open();
  EXPECT_LE(dialog->height(), 700) << "must fit 768 lines with its frame";
  dialog->resize(dialog->minimumSize());
  for (int page = 0; dialog->ShowPage(page), dialog->Page() == page; ++page) {
    auto* area = qobject_cast<QScrollArea*>(dialog->findChild<QStackedWidget*>()->currentWidget());
    ASSERT_NE(area, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return area->widget()->width() <= area->viewport()->width(); })) << page;
  }
}

TEST_F(Preferences, HandOutWhatWasEditedAndNothingElse) {
  settings.catalogue.thumbnailBackgroundColour = "pink";
  settings.catalogue.extraLargeThumbnailSize = 99999;
  Open();
  EXPECT_FALSE(Button(QDialogButtonBox::Apply)->isEnabled());
  Field<QCheckBox>("ShowHiddenDirectories")->click();
  Choose("OptimiseSize", 2);
  EXPECT_TRUE(applied.empty());
  Button(QDialogButtonBox::Apply)->click();
  ASSERT_EQ(applied.size(), 1U);
  EXPECT_EQ(applied[0].catalogue.showHiddenDirectories, 1);
  EXPECT_EQ(applied[0].display.optimiseSize, 2);
  EXPECT_EQ(applied[0].catalogue.thumbnailBackgroundColour, "pink") << "nobody touched it";
  EXPECT_EQ(applied[0].catalogue.extraLargeThumbnailSize, 99999);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_FALSE(Button(QDialogButtonBox::Apply)->isEnabled());
  Button(QDialogButtonBox::Ok)->click();
  EXPECT_EQ(applied.size(), 1U) << "nothing new";
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(Preferences, TellWhatATextWithTokensGives) {
  settings.shootingData.exifFormatString = "a\xC4";
  Open();
  dialog->ShowPage(8);
  auto* line = Field<QLineEdit>("ExifFormatString");
  const auto* example = Field<QLabel>("ExifFormatStringExample");
  EXPECT_EQ(Field<QLabel>("MainExifFormatStringExample")->text(), QStringLiteral("lines: @exifSummary@"));
  EXPECT_FALSE(Button(QDialogButtonBox::Apply)->isEnabled()) << "bytes that are no text stay";
  line->setFocus();
  line->selectAll();
  QTest::keyClicks(line, QStringLiteral("x y"));
  line->setCursorPosition(2);
  for (const char* token : {"@iso@", "@IPTC_city@", "@imageNumber@"}) {
    auto* action = InsertAction("ExifFormatString", token);
    ASSERT_NE(action, nullptr) << token;
    action->trigger();
  }
  EXPECT_EQ(example->text(), QStringLiteral("line: x @iso@@IPTC_city@@imageNumber@y"));
  EXPECT_EQ(InsertAction("MainExifFormatString", "@imageNumber@"), nullptr) << "known to the line alone";
  EXPECT_TRUE(InsertAction("MainExifFormatString", "@exif@")->text().startsWith(QStringLiteral("All shooting data")));
  hasImage = false;
  line->setText(QStringLiteral("@iso@ @x@"));
  EXPECT_EQ(example->text(), QStringLiteral("ISO @x@"));
  Button(QDialogButtonBox::Ok)->click();
  ASSERT_EQ(applied.size(), 1U);
  EXPECT_EQ(applied[0].shootingData.exifFormatString, "@iso@ @x@");
}

TEST_F(Preferences, AreLeftByEscapeWithoutAnEffect) {
  Open();
  Field<QCheckBox>("Wraparound")->click();
  QTest::keyClick(dialog.get(), Qt::Key_Escape);
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_TRUE(applied.empty());
}

TEST_F(Preferences, AreTakenOverByReturn) {
  Open();
  dialog->ShowPage(1);
  auto* box = Field<QSpinBox>("ExtraLargeThumbnailSize");
  box->setFocus();
  box->selectAll();
  QTest::keyClicks(box, QStringLiteral("320"));
  QTest::keyClick(box, Qt::Key_Return);
  ASSERT_EQ(applied.size(), 1U);
  EXPECT_EQ(applied[0].catalogue.extraLargeThumbnailSize, 320);
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(Preferences, TellAWrongNumberBesideItsFieldAndKeepIt) {
  Open();
  dialog->ShowPage(1);
  auto* box = Field<QSpinBox>("ExtraLargeThumbnailSize");
  box->setFocus();
  box->selectAll();
  QTest::keyClicks(box, QStringLiteral("5"));
  const auto sentence = QStringLiteral("Takes a whole number from 16 to 2000.");
  EXPECT_TRUE(IsShown(sentence));
  EXPECT_EQ(box->accessibleDescription(), sentence);
  dialog->ShowPage(0);
  Button(QDialogButtonBox::Ok)->click();
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_TRUE(applied.empty());
  EXPECT_EQ(dialog->Page(), 1) << "back to the field";
  EXPECT_EQ(box->value(), 5);
  box->stepUp();
  EXPECT_EQ(box->value(), 16) << "arrows lead back into the range";
  EXPECT_FALSE(IsShown(sentence));
  Button(QDialogButtonBox::Ok)->click();
  ASSERT_EQ(applied.size(), 1U);
  EXPECT_EQ(applied[0].catalogue.extraLargeThumbnailSize, 16);
}

TEST_F(Preferences, RefuseNoValueThatDoesNotCount) {
  settings.editor.shellOpenEditor = 0;
  Open();
  dialog->ShowPage(7);
  auto* line = Field<QLineEdit>("OpenEditorCmdLine");
  line->setFocus();
  QTest::keyClicks(line, QStringLiteral("\"open"));
  EXPECT_TRUE(IsShown(QStringLiteral("The closing quotes are missing.")));
  Field<QCheckBox>("ShellOpenEditor")->click();
  EXPECT_FALSE(IsShown(QStringLiteral("The closing quotes are missing.")));
  Button(QDialogButtonBox::Ok)->click();
  ASSERT_EQ(applied.size(), 1U);
  EXPECT_EQ(applied[0].editor.shellOpenEditor, 1);
  EXPECT_EQ(applied[0].editor.openEditorCmdLine, "") << "the last value that could be taken";
}

TEST_F(Preferences, TakeTheProfileThatWasBrowsedFor) {
  settings.colour.enableMonitorProfile = 1;
  settings.colour.monitorProfile = "/old.icc";
  Open();
  dialog->ShowPage(3);
  auto* line = Field<QLineEdit>("MonitorProfile");
  auto* browse = line->parentWidget()->findChild<QPushButton*>();
  browse->click();
  EXPECT_EQ(browsedFrom, "/old.icc");
  EXPECT_EQ(line->text(), QLatin1String("/old.icc")) << "cancelled";
  chosen = "/no such/caf\xc3\xa9.icc";
  browse->click();
  EXPECT_TRUE(IsShown(QStringLiteral("There is no such file, or it cannot be read.")));
  Button(QDialogButtonBox::Apply)->click();
  ASSERT_EQ(applied.size(), 1U) << "a file that is away for now is no mistake";
  EXPECT_EQ(applied[0].colour.monitorProfile, *chosen);
}

TEST_F(Preferences, RestoreThePageOnShow) {
  settings.catalogue.wraparound = 1;
  settings.catalogue.thumbnailSize = 2;
  Open();
  EXPECT_TRUE(Restore()->isEnabled());
  Restore()->click();
  EXPECT_FALSE(Field<QCheckBox>("Wraparound")->isChecked());
  EXPECT_FALSE(Restore()->isEnabled());
  EXPECT_EQ(Field<QComboBox>("ThumbnailSize")->currentIndex(), 2) << "another page";
  EXPECT_TRUE(applied.empty());
  Button(QDialogButtonBox::Ok)->click();
  ASSERT_EQ(applied.size(), 1U);
  EXPECT_EQ(applied[0].catalogue.wraparound, 0);
  EXPECT_EQ(applied[0].catalogue.thumbnailSize, 2);
}

TEST_F(Preferences, FindSettingsOnAllPages) {
  Open();
  QTest::keyClick(dialog.get(), Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(Search()->hasFocus());
  QTest::keyClicks(Search(), QStringLiteral("thumbnail"));
  const auto pageOf = [this](const char* title) {
    const auto pages = PreferencePages();
    return static_cast<int>(std::ranges::find(pages, title, &PreferencePage::title) - pages.begin());
  };
  const int first = dialog->Page();
  EXPECT_TRUE(Titles()->item(pageOf("Thumbnails"))->text().startsWith(QLatin1String("Thumbnails (")));
  EXPECT_EQ(Titles()->item(pageOf("Files"))->text(), QLatin1String("Files"));
  for (int i = 0; i < 30 && dialog->Page() != pageOf("Colour"); ++i) QTest::keyClick(Search(), Qt::Key_Return);
  EXPECT_EQ(dialog->Page(), pageOf("Colour"));
  EXPECT_TRUE(Field<QCheckBox>("SuppressThumbnailCMS")->autoFillBackground()) << "marked";
  EXPECT_FALSE(Field<QCheckBox>("EnableMonitorProfile")->autoFillBackground() &&
               Field<QCheckBox>("EnablePrinterProfile")->autoFillBackground());
  while (dialog->Page() != first) QTest::keyClick(Search(), Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClick(Search(), Qt::Key_Escape);
  EXPECT_TRUE(dialog->isVisible()) << "the first Escape ends the search";
  EXPECT_FALSE(Field<QCheckBox>("SuppressThumbnailCMS")->autoFillBackground());
  QTest::keyClicks(Search(), QStringLiteral("zeppelin"));
  EXPECT_TRUE(IsShown(QStringLiteral("Nothing found")));
  EXPECT_TRUE(applied.empty());
}

TEST_F(Preferences, LeadFromTheSearchIntoTheField) {
  Open();
  Search()->setFocus();
  QTest::keyClicks(Search(), QStringLiteral("HighlightBlinkThreshold"));
  QTest::keyClick(Search(), Qt::Key_Down);
  EXPECT_TRUE(Field<QSpinBox>("HighlightBlinkThreshold")->hasFocus());
}

TEST_F(Preferences, AreReachedByKeyboardInTheOrderOfThePage) {
  Open();
  for (std::size_t page = 0; page < PreferencePages().size(); ++page) {
    dialog->ShowPage(static_cast<int>(page));
    Titles()->setFocus();
    for (const auto& row : PreferencePages()[page].rows) {
      auto* field = Field<QWidget>(std::string(row.key).c_str());
      EXPECT_FALSE(field->accessibleName().isEmpty()) << row.key;
      if (!field->isEnabled()) continue;
      for (int i = 0; i < 2 && !field->hasFocus(); ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      EXPECT_TRUE(field->hasFocus()) << row.key;
    }
  }
}

}  // namespace
}  // namespace ml::app
