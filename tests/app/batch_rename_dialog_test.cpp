#include "batch/ui/batch_rename_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "batch/ui/rename_list_model.h"
#include "batch/ui/token_help.h"
#include "platform/errors.h"

namespace ml::batch::ui {
namespace {

RenameChoices Remembered(int row, bool continuous) {
  return {.row = row,
          .digits = 6,
          .continuous = continuous,
          .firstNumber = 40,
          .custom = {{{"One", "%o_%n", 70}, {"Two", "%o_%u", 80}, {"Three", "%o", -5}}}};
}

struct FormCase {
  const char* name;
  int row;
  bool continuous;
  FieldUse digitsUse;
  int digits;
  FieldUse firstUse;
  int first;
  int counter;  ///< in force
};

TEST(RenameForm, ShowsWhatTheRowWants) {
  constexpr auto kEdit = FieldUse::Edit, kReadOnly = FieldUse::ReadOnly, kOff = FieldUse::Off;
  for (const auto& want :
       {FormCase{"Standard", 0, true, kReadOnly, 4, kReadOnly, 40, 40},
        FormCase{"StandardAnew", 0, false, kReadOnly, 4, kEdit, 1, 1},
        FormCase{"DateWithoutNumber", 3, true, kReadOnly, 3, kOff, 1, 40},
        FormCase{"DigitsOfRowSixStay", 6, true, kOff, 1, kOff, 1, 40},
        FormCase{"Custom", 7, true, kEdit, 6, kReadOnly, 70, 70},
        FormCase{"CustomAnew", 7, false, kEdit, 6, kEdit, 1, 1}, FormCase{"OnlyUnique", 8, true, kEdit, 6, kOff, 1, 80},
        FormCase{"NoNumber", 9, true, kOff, 1, kOff, 1, 0}, FormCase{"BehindTheEnd", 12, true, kOff, 1, kOff, 1, 0}}) {
    SCOPED_TRACE(want.name);
    const RenameForm form(Remembered(want.row, want.continuous));
    EXPECT_EQ(form.Digits().use, want.digitsUse);
    EXPECT_EQ(form.Digits().value, want.digits);
    EXPECT_EQ(form.FirstNumber().use, want.firstUse);
    EXPECT_EQ(form.FirstNumber().value, want.first);
    EXPECT_EQ(form.Style().firstNumber, want.counter);
    EXPECT_EQ(form.Digits().reason.empty(), want.digitsUse == FieldUse::Edit);
  }
}

TEST(RenameForm, TakesOverWhatOneRowLeavesToTheNext) {
  RenameForm form(Remembered(7, true));
  form.SetDigits(8);
  EXPECT_EQ(form.Style().digits, 6U) << "does not count";
  form.ChooseRow(5);
  EXPECT_EQ(form.Style().firstNumber, 40);
  form.SetFormat("lost");
  form.ChooseRow(7);
  EXPECT_EQ(form.Format(), "%o_%n");
  EXPECT_EQ(form.Style().digits, 1U) << "as the row before had them";
  form.SetContinuous(false);
  form.SetFirstNumber(500);
  form.ChooseRow(0);
  EXPECT_EQ(form.FirstNumber().value, 500);
  form.SetContinuous(true);
  EXPECT_EQ(form.FirstNumber().value, 40);
}

TEST(RenameForm, RemembersTheNextNumberInTheRowAndInTheBuiltInOnes) {
  auto expected = Remembered(8, true);
  expected.firstNumber = expected.custom[1].firstNumber = 93;
  EXPECT_EQ(RenameForm(Remembered(8, true)).Accepted(93), expected);
  expected = Remembered(6, true);
  expected.firstNumber = 93;
  EXPECT_EQ(RenameForm(Remembered(6, true)).Accepted(93), expected);
}

TEST(RenameTokens, OfTheMenuAreAllKnown) {
  for (const auto& group : TokenHelpGroups()) {
    for (const auto& help : group.tokens) {
      const auto names = BuildNewNames({{.name = "abcdef.jpg", .facts = {}}}, {.format = std::string(help.token)}, {});
      EXPECT_EQ(names.rows[0].newName.find('%'), std::string::npos) << help.token;
    }
  }
}

class BatchRenameDialog : public testing::Test {
 protected:
  void Open(const RenameChoices& choices) {
    RenameDialogInput input{.images = {}, .otherFiles = {"IMG_0041.jpg", "old.txt"}, .targets = RenameTargets::All};
    for (const auto* name : {"b_2.jpg", "a_1.jpg", "caf\xe9.crw"}) input.images.push_back({.name = name, .facts = {}});
    input.images[1].facts.aperture = "2.8";
    const auto check = [this](const NewNames&, const RenameStyle&) {
      if (!refusal.empty()) throw platform::UserError(refusal);
    };
    dialog = std::make_unique<CBatchRenameDialog>(std::move(input), choices, check, nullptr);
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
  }
  template <class Field>
  Field* Named(const char* name) {
    for (auto* field : dialog->findChildren<Field*>()) {
      if (field->accessibleName() == QLatin1String(name)) return field;
    }
    throw std::runtime_error(name);
  }
  void TypeFormat(const char* text) {
    auto* line = Named<QLineEdit>("Format");
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, QLatin1String(text));
  }
  std::vector<std::string> NewNamesShown() {
    std::vector<std::string> names;
    for (const auto& row : Rows()) names.push_back(row.newName);
    return names;
  }
  const std::vector<RenameRow>& Rows() { return dialog->findChild<RenameListModel*>()->Rows(); }
  /// Does what brings up a box, which is closed; its text.
  std::string Told(const std::function<void()>& act) {
    std::string text;
    QTimer::singleShot(20, dialog.get(), [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      text = box->text().toStdString();
      EXPECT_EQ(box->icon(), QMessageBox::Critical);
      box->accept();
    });
    act();
    return text;
  }

  std::string refusal;
  std::unique_ptr<CBatchRenameDialog> dialog;
};

using Names = std::vector<std::string>;

TEST_F(BatchRenameDialog, ListsTheNamesWhileOneTypes) {
  Open(Remembered(7, true));
  EXPECT_EQ(NewNamesShown(), (Names{"a_1_000070.jpg", "b_2_000071.jpg", "caf\xe9_000072.crw"}));
  TypeFormat("x%n");
  EXPECT_EQ(NewNamesShown(), (Names{"x000070.jpg", "x000071.jpg", "x000072.crw"}));
  Named<QSpinBox>("Digits")->setValue(2);
  Named<QComboBox>("Sort by")->setCurrentIndex(3);
  Named<QComboBox>("Letter case")->setCurrentIndex(3);
  EXPECT_EQ(NewNamesShown(), (Names{"X70.JPG", "X71.JPG", "X72.CRW"}));
  EXPECT_EQ(Rows()[0].oldName, "b_2.jpg");
  QTest::keyClick(dialog.get(), Qt::Key_Return);
  EXPECT_EQ(dialog->result(), QDialog::Accepted);
  const auto after = dialog->Form().Accepted(dialog->Names().nextCounter);
  EXPECT_EQ(after.custom[0], (CustomStyle{"One", "x%n", 73}));
}

TEST_F(BatchRenameDialog, MarksWhatCannotBe) {
  Open(Remembered(7, true));
  TypeFormat("x");
  EXPECT_EQ(Rows()[0].remark + Rows()[1].remark + Rows()[2].remark, "Given twiceGiven twice");
  TypeFormat("%o:");
  EXPECT_EQ(Rows()[2].remark, "Character not allowed");
  TypeFormat("%o");
  EXPECT_EQ(Rows()[0].remark, "Stays");
  TypeFormat("old");
  auto* model = dialog->findChild<RenameListModel*>();
  EXPECT_EQ(model->NextProblem(0), 1);
  EXPECT_EQ(model->NextProblem(1), 0);
  EXPECT_FALSE(model->index(0, 2).data(Qt::DecorationRole).isNull());
  EXPECT_TRUE(model->index(2, 2).data(Qt::DecorationRole).isNull());
  refusal = "no";
  EXPECT_EQ(Told([&] { QTest::keyClick(dialog.get(), Qt::Key_Return); }), "no");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->findChild<QTableView*>()->currentIndex().row(), 0);
}

TEST_F(BatchRenameDialog, TellsOfConflictsWhenAnotherStyleIsChosenAndNotWhileTyping) {
  Open(Remembered(9, true));
  const auto chosen = [this](int row) { Named<QComboBox>("Style")->setCurrentIndex(row); };
  EXPECT_EQ(Told([&] { chosen(0); }), "ERROR: the following filenames conflict with\nexisting files:\nIMG_0041.jpg");
  EXPECT_TRUE(Named<QLineEdit>("Format")->isReadOnly());
  EXPECT_TRUE(Named<QSpinBox>("Digits")->isReadOnly());
  chosen(9);
  TypeFormat("IMG_0041");
  EXPECT_EQ(Rows()[0].remark, "Exists already");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(BatchRenameDialog, PutsTokensWhereTheCursorIs) {
  Open(Remembered(9, true));
  TypeFormat("ab");
  Named<QLineEdit>("Format")->setCursorPosition(1);
  for (auto* menu : dialog->findChildren<QMenu*>()) Q_EMIT menu->aboutToShow();
  QAction* aperture = nullptr;
  for (auto* action : dialog->findChildren<QAction*>()) {
    if (action->text() == QStringLiteral("Aperture: 2.8\t%A")) aperture = action;
  }
  ASSERT_NE(aperture, nullptr) << "with what it gives for the first image";
  aperture->trigger();
  EXPECT_EQ(dialog->Form().Format(), "a%Ab");
  EXPECT_EQ(NewNamesShown().front(), "a2.8b.jpg");
}

TEST_F(BatchRenameDialog, NamesCustomStyles) {
  Open(Remembered(8, true));
  auto* line = Named<QLineEdit>("Name of style");
  line->selectAll();
  QTest::keyClicks(line, QStringLiteral("Sea & sky"));
  EXPECT_EQ(Named<QComboBox>("Style")->currentText(), QStringLiteral("Sea & sky"));
  EXPECT_EQ(dialog->Form().Choices().custom[1].name, "Sea & sky");
  Named<QComboBox>("Style")->setCurrentIndex(1);
  EXPECT_FALSE(line->isEnabled());
  EXPECT_EQ(line->text(), QStringLiteral("Enhanced"));
}

}  // namespace
}  // namespace ml::batch::ui
