#include "metadata/ui/iptc_property_sheet.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <stdexcept>

#include "app/theme.h"
#include "metadata/iptc/iptc_file.h"
#include "metadata/ui/iptc_field_editor.h"
#include "platform/dates.h"
#include "platform/errors.h"
#include "support/fakes.h"
#include "support/temp_dir.h"

namespace ml::metadata::ui {
namespace {

using Items = std::vector<IptcItem>;

const std::string kLong(10'240, 'x');

class IptcSheet : public testing::Test {
 protected:
  IptcSheet() {
    ::setenv("TZ", "Europe/Berlin", 1);
    ::tzset();
    data["a.jpg"] = {{2, 200, "unknown"}, {2, 120, "caf\xe9\r\nline"}, {2, 80, "first"}, {2, 80, "second"},
                     {2, 25, "sea"},      {2, 25, "caf\xe9"},          {2, 15, "SPORT"}};
    data["b.jpg"] = {{2, 120, kLong}, {2, 25, "sun"}};
    data["c.jpg"] = {};
  }

  void Open(std::size_t first = 0) {
    IptcSheetHost host{
        .read =
            [this](const std::string& path) {
              ExifData image;
              image.path = path;
              image.dateTime = image.dateTimeOriginal = "2003:05:17 10:11:12";
              image.shootingTime = *platform::ToTime(*platform::ParseDateTime(image.dateTime));
              image.dateRecorded = true;
              image.iptc = data[path];
              return image;
            },
        .chooseFileToLoad = [this](QWidget&) { return file; },
        .chooseFileToSave = [this](QWidget&) { return file; },
        .expand = [](const ExifData& image,
                     std::string_view format) { return format == "@iso@" ? "100 of " + image.path : std::string(); },
        .clock = clock,
        .apply = Applier()};
    sheet = std::make_unique<CIptcPropertySheet>(IptcSheetImages{.steps = {"a.jpg", "b.jpg", "c.jpg"},
                                                                 .first = first,
                                                                 .selected = {"a.jpg", "c.jpg"},
                                                                 .all = {"a.jpg", "b.jpg", "c.jpg"}},
                                                 IptcBatchRules{}, std::move(host), nullptr);
    sheet->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(sheet.get()));
  }
  /// Writes into `data`.
  IptcApplier Applier() {
    return {[this](const std::string& path, const IptcSheetValues& values) {
              if (refuses) throw platform::UserError("The disk is full");
              data[path] = ItemsOf(values, data[path]);
            },
            [this](const IptcBatch& batch, QWidget&) {
              batches.push_back(batch);
              for (const auto& path : batch.paths) {
                data[path] = MergeIptc(data[path], ItemsOf(batch.values, {}), batch.rules);
              }
              return IptcBatchReport{2, 1, 3};
            }};
  }

  template <class Widget>
  Widget* In(int dataset) {
    auto* editor = sheet->findChild<IptcFieldEditor*>(QStringLiteral("IptcField%1").arg(dataset));
    auto* widget = editor == nullptr ? nullptr : editor->findChild<Widget*>();
    if (widget == nullptr) throw std::runtime_error("no field " + std::to_string(dataset));
    return widget;
  }
  QPushButton* Button(const char* text) {
    for (auto* button : sheet->findChildren<QPushButton*>()) {
      if (QString(button->text()).remove(QLatin1Char('&')) == QLatin1String(text)) return button;
    }
    throw std::runtime_error(std::string("no button ") + text);
  }
  void Type(int dataset, const char* text) {
    auto* line = In<QLineEdit>(dataset);
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, QLatin1String(text));
  }
  /// Presses the first of `answers` in the box on show, the next in the one after it and so on.
  void Answer(std::vector<std::string> answers, std::string& text) {
    QTimer::singleShot(20, sheet.get(), [this, answers, &text]() mutable {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr) << "nobody asks for " << answers[0];
      text = box->text().toStdString();
      const auto buttons = box->buttons();
      const auto wanted = std::ranges::find_if(buttons, [&](const auto* button) {
        return QString(button->text()).remove(QLatin1Char('&')).toStdString() == answers[0];
      });
      answers.erase(answers.begin());
      if (!answers.empty()) Answer(answers, text);
      EXPECT_NE(wanted, buttons.end()) << text;
      wanted == buttons.end() ? box->reject() : (*wanted)->click();
    });
  }
  /// Does what brings up boxes and answers them. Gives the text of the last.
  std::string Answering(const std::vector<std::string>& answers, const std::function<void()>& act) {
    std::string text;
    Answer(answers, text);
    act();
    EXPECT_FALSE(text.empty());
    return text;
  }
  bool IsTold(const QString& text) {
    QApplication::processEvents();
    return std::ranges::any_of(sheet->findChildren<QLabel*>(), [&](const auto* label) {
      return label->isVisible() && label->text() == text && label->width() >= label->sizeHint().width();
    });
  }

  std::map<std::string, Items> data;
  std::vector<IptcBatch> batches;
  bool refuses = false;
  std::optional<std::string> file;
  test::FakeClock clock;
  std::unique_ptr<CIptcPropertySheet> sheet;
};

TEST_F(IptcSheet, StepsThroughTheImages) {
  Open(1);
  EXPECT_EQ(sheet->windowTitle(), QStringLiteral("IPTC Data - b.jpg - Image 2 of 3"));
  EXPECT_FALSE(In<QPlainTextEdit>(120)->isEnabled()) << "longer than what is edited";
  EXPECT_EQ(In<QPlainTextEdit>(120)->toPlainText(), QString());
  QTest::keyClick(sheet.get(), Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(sheet->Path(), "a.jpg");
  EXPECT_EQ(In<QPlainTextEdit>(120)->toPlainText(), QString::fromUtf8("caf\xc3\xa9\nline"));
  EXPECT_TRUE(In<QPlainTextEdit>(120)->isEnabled());
  EXPECT_EQ(In<QLineEdit>(80)->text(), QStringLiteral("second"));
  EXPECT_EQ(In<QListWidget>(25)->count(), 2);
  EXPECT_FALSE(Button("< Prev")->isEnabled());
  EXPECT_FALSE(Button("Apply")->isEnabled()) << "looking changes nothing, whatever the bytes are";
  Button("Next >")->click();
  Button("Next >")->click();
  EXPECT_EQ(sheet->windowTitle(), QStringLiteral("IPTC Data - c.jpg - Image 3 of 3"));
  EXPECT_FALSE(Button("Next >")->isEnabled());
  QTest::keyClick(sheet.get(), Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(sheet->Page(), 4);
}

TEST_F(IptcSheet, AsksBeforeChangesAreLost) {
  Open();
  Type(105, "head");
  EXPECT_TRUE(Button("Apply")->isEnabled());
  const auto next = [this] { Button("Next >")->click(); };
  Answering({"Cancel"}, next);
  EXPECT_EQ(sheet->Path(), "a.jpg");
  EXPECT_EQ(In<QLineEdit>(105)->text(), QStringLiteral("head"));
  refuses = true;
  EXPECT_EQ(Answering({"Apply", "OK"}, next), "The disk is full");
  EXPECT_EQ(sheet->Path(), "a.jpg") << "what was not written is still there";
  refuses = false;
  Answering({"Apply"}, next);
  EXPECT_EQ(sheet->Path(), "b.jpg");
  const Items expected = {{2, 200, "unknown"}, {2, 15, "SPORT"},  {2, 25, "sea"},   {2, 25, "caf\xe9"},
                          {2, 80, "first"},    {2, 80, "second"}, {2, 105, "head"}, {2, 120, "caf\xe9\r\nline"}};
  EXPECT_EQ(data["a.jpg"], expected);
  Type(25, "pending");
  Answering({"Cancel"}, [this] { sheet->close(); });
  EXPECT_TRUE(sheet->isVisible()) << "a word that still stands in its line counts";
  Answering({"Discard"}, [this] { sheet->close(); });
  EXPECT_FALSE(sheet->isVisible());
  EXPECT_EQ(data["b.jpg"].size(), 2U);
}

TEST_F(IptcSheet, KeepsAPageWithAFault) {
  Open(2);
  sheet->ShowPage(2);
  Type(15, "NEWS");
  EXPECT_EQ(Answering({"OK"}, [this] { sheet->ShowPage(0); }), "Category must be three characters or less");
  EXPECT_EQ(sheet->Page(), 2);
  EXPECT_EQ(sheet->focusWidget(), In<QLineEdit>(15));
  EXPECT_TRUE(IsTold(QStringLiteral("Category must be three characters or less")));
  Type(15, "NWS");
  EXPECT_FALSE(IsTold(QStringLiteral("Category must be three characters or less")));
  sheet->ShowPage(4);
  EXPECT_EQ(sheet->Page(), 4);
  Type(30, "20031301");
  const std::string sentence = "Invalid release date entered.\nThe date must be in the form: YYYYMMDD\ne.g. 20020324";
  EXPECT_EQ(Answering({"OK"}, [this] { Button("Apply to All")->click(); }), sentence);
  EXPECT_TRUE(batches.empty());
  Type(30, "2003-12/01");
  Button("Apply")->click();
  EXPECT_EQ(data["c.jpg"], (Items{{2, 15, "NWS"}, {2, 30, "20031201"}}));
  EXPECT_FALSE(Button("Apply")->isEnabled());
}

TEST_F(IptcSheet, LetsBeWhatTheImageCameWith) {
  Open();
  sheet->ShowPage(2);
  sheet->ShowPage(0);
  EXPECT_EQ(sheet->Page(), 0) << "a category of five letters in the file keeps nobody";
  sheet->ShowPage(3);
  EXPECT_TRUE(
      IsTold(QStringLiteral("The image has 2 values here, of which this is the last. Editing it replaces them all.")));
  Type(80, "x");
  QTest::keyClick(In<QLineEdit>(80), Qt::Key_Backspace);
  QTest::keyClicks(In<QLineEdit>(80), QStringLiteral("second"));
  EXPECT_FALSE(Button("Apply")->isEnabled()) << "typed as it was";
}

TEST_F(IptcSheet, EditsLists) {
  Open();
  sheet->ShowPage(1);
  auto* line = In<QLineEdit>(25);
  auto* list = In<QListWidget>(25);
  Type(25, "wind, sea ;sun");
  QTest::keyClick(line, Qt::Key_Return);
  EXPECT_EQ(list->count(), 4) << "sea was there";
  EXPECT_EQ(line->text(), QString());
  QApplication::clipboard()->setText(QStringLiteral("one\ntwo\r\nwind\n"));
  list->setFocus();
  QTest::keyClick(list, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(list->count(), 6);
  QTest::keyClick(list, Qt::Key_Delete);
  list->item(1)->setText(QStringLiteral("w\u00e9nd"));
  Button("Apply")->click();
  std::vector<std::string> words;
  for (const auto& item : data["a.jpg"]) {
    if (item.dataset == 25) words.push_back(item.value);
  }
  EXPECT_EQ(words, (std::vector<std::string>{"caf\xe9", "w\xc3\xa9nd", "sun", "one", "two"}));
}

TEST_F(IptcSheet, FillsDates) {
  Open(2);
  sheet->ShowPage(4);
  clock.time = 1'048'928'400;  // 2003-03-29 10:00:00, a day before summer time
  const auto choose = [this](const char* text) {
    for (auto* menu : sheet->findChildren<QMenu*>()) {
      for (auto* action : menu->actions()) {
        if (action->text() == QLatin1String(text)) return action->trigger();
      }
    }
    ADD_FAILURE() << text;
  };
  choose("&EXIF Date/Time");
  EXPECT_EQ(In<QLineEdit>(55)->text(), QStringLiteral("20030517"));
  EXPECT_EQ(In<QLineEdit>(60)->text(), QStringLiteral("101112+0200"));
  choose("&Two days ago");
  EXPECT_EQ(In<QLineEdit>(55)->text(), QStringLiteral("20030327"));
  choose("&One week from now");
  EXPECT_EQ(In<QLineEdit>(30)->text(), QStringLiteral("20030405"));
  EXPECT_EQ(In<QLineEdit>(35)->text(), QStringLiteral("100000+0200"));
  choose("&Clear");
  EXPECT_EQ(In<QLineEdit>(55)->text() + In<QLineEdit>(60)->text(), QString());
  EXPECT_TRUE(Button("Apply")->isEnabled());
}

TEST_F(IptcSheet, PutsTokensWhereTheCursorIs) {
  Open(1);
  auto* insert = Button("Insert");
  EXPECT_FALSE(insert->isEnabled()) << "the caption is locked";
  Button("Next >")->click();
  const auto choose = [&](const char* shown) {
    for (auto* menu : insert->findChildren<QMenu*>()) {
      Q_EMIT menu->aboutToShow();
      for (auto* action : menu->actions()) {
        if (action->text() == QLatin1String(shown)) return action->trigger();
      }
    }
    ADD_FAILURE() << shown;
  };
  auto* text = In<QPlainTextEdit>(120);
  text->setFocus();
  QTest::keyClicks(text, QStringLiteral("at "));
  choose("ISO: 100 of c.jpg\t@iso@");
  Type(105, "ab");
  QTest::keyClick(In<QLineEdit>(105), Qt::Key_Left);
  insert->setFocus();
  choose("Body ID\t@bodyID@");
  EXPECT_EQ(sheet->focusWidget(), In<QLineEdit>(105));
  sheet->ShowPage(1);
  Type(25, "");
  choose("ISO: 100 of c.jpg\t@iso@");
  const Items expected = {{2, 25, "@iso@"}, {2, 105, "a@bodyID@b"}, {2, 120, "at @iso@"}};
  Button("Apply")->click();
  EXPECT_EQ(data["c.jpg"], expected);
  sheet->ShowPage(4);
  EXPECT_TRUE(insert->isEnabled());
  for (const int refusing : {55, 30}) {
    In<QLineEdit>(refusing)->setFocus();
    EXPECT_FALSE(insert->isEnabled());
  }
  In<QLineEdit>(60)->setFocus();
  EXPECT_TRUE(insert->isEnabled());
  insert->setFocus();
  sheet->ShowPage(2);
  EXPECT_FALSE(insert->isEnabled()) << "its field is out of sight";
}

TEST_F(IptcSheet, SavesAndLoads) {
  const test::TempDir dir;
  file = dir / "x.ipt";
  Open();
  Type(105, "head");
  Button("Save to file...")->click();
  EXPECT_EQ(LoadIptcFile(*file).size(), 8U);
  Answering({"Discard"}, [this] { Button("Next >")->click(); });
  Button("Load...")->click();
  EXPECT_EQ(In<QLineEdit>(105)->text(), QStringLiteral("head"));
  EXPECT_EQ(In<QPlainTextEdit>(120)->toPlainText(), QString::fromUtf8("caf\xc3\xa9\nline"));
  EXPECT_FALSE(In<QPlainTextEdit>(120)->isEnabled());
  EXPECT_TRUE(Button("Apply")->isEnabled());
  Type(7, "new");
  Answering({"Cancel"}, [this] { Button("Load...")->click(); });
  EXPECT_EQ(In<QLineEdit>(7)->text(), QStringLiteral("new"));
  file = dir.Write("bad.ipt", std::string("\x1c\x02\x05\x14\x01x", 6));
  EXPECT_EQ(Answering({"OK"}, [this] { Button("Load...")->click(); }),
            *file + ": holds an IPTC value of more than 5,120 bytes");
  EXPECT_EQ(In<QLineEdit>(7)->text(), QStringLiteral("new"));
}

TEST_F(IptcSheet, AppliesToMany) {
  Open();
  sheet->findChild<QCheckBox*>(QStringLiteral("IptcMergeKeywords"))->click();
  Type(105, "head");
  Type(110, "credit");
  Answering({"Cancel"}, [this] { Button("Apply to All")->click(); });
  EXPECT_TRUE(batches.empty());
  EXPECT_EQ(Answering({"Write"}, [this] { Button("Apply to Selected")->click(); }),
            "Write these values into 2 images?");
  ASSERT_EQ(batches.size(), 1U);
  EXPECT_EQ(batches[0].paths, (std::vector<std::string>{"a.jpg", "c.jpg"}));
  EXPECT_FALSE(batches[0].rules.mergeKeywords);
  EXPECT_TRUE(batches[0].rules.onlyReplaceEmpty && batches[0].rules.leaveExistingIfNewEmpty);
  EXPECT_TRUE(batches[0].exifTimestamp);
  EXPECT_FALSE(sheet->Rules().merge.mergeKeywords);
  EXPECT_TRUE(IsTold(QStringLiteral("2 images written, 1 left as they were, 3 not written")));
  EXPECT_FALSE(Button("Apply")->isEnabled()) << "the image on show took it all";
  Type(105, "other");
  Answering({"Write"}, [this] { Button("Apply to All")->click(); });
  EXPECT_EQ(In<QLineEdit>(105)->text(), QStringLiteral("other")) << "the image kept its own, the user's text stays too";
  EXPECT_TRUE(Button("Apply")->isEnabled());
}

}  // namespace
}  // namespace ml::metadata::ui
