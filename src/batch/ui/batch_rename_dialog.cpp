#include "batch/ui/batch_rename_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "batch/apply_rename.h"
#include "batch/ui/messages.h"
#include "batch/ui/rename_list_pane.h"
#include "batch/ui/token_help.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/ui/field_label.h"
#include "platform/ui/help_button.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/qt_text.h"
#include "platform/ui/token_menu.h"

namespace ml::batch::ui {
namespace {

using platform::ui::PlainToolTip;
using platform::ui::ToLabel;
using platform::ui::ToQString;

constexpr QSize kFirstSize{760, 640}, kSmallestSize{480, 320};
/// Of a window; how much it is is known only once it shows.
constexpr QSize kRoomForFrame{8, 32};
constexpr int kMargin = 12, kSpacing = 8;
/// The settings give back texts of less than 512 bytes.
constexpr int kLongestText = 127;

/// A label before `field`, both in a line of their own.
void AddField(QGridLayout& grid, const char* label, QWidget* field, QWidget* whole = nullptr) {
  auto* text = platform::ui::MakeFieldLabel(label, *field, field->parentWidget());
  const int line = grid.rowCount();
  grid.addWidget(text, line, 0);
  grid.addWidget(whole != nullptr ? whole : field, line, 1);
}

QWidget* SideBySide(QWidget* field, QWidget* other, QWidget* parent) {
  auto* whole = new QWidget(parent);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  layout->addWidget(field);
  layout->addWidget(other);
  return whole;
}

template <std::size_t size>
QComboBox* MakeChoice(const char* const (&texts)[size], int index, QWidget* parent) {
  auto* box = new QComboBox(parent);
  for (const auto* text : texts) box->addItem(QLatin1String(text));
  box->setCurrentIndex(index);
  return box;
}

}  // namespace

CBatchRenameDialog::CBatchRenameDialog(RenameDialogInput input, const RenameChoices& choices, RenameCheck check,
                                       QWidget* parent)
    : QDialog(parent), input_(std::move(input)), form_(choices), check_(std::move(check)) {
  setObjectName(QStringLiteral("batchRenameDialog"));
  setWindowTitle(QLatin1String(kRenameTitle));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kSpacing);
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  grid->setHorizontalSpacing(kMargin);
  grid->setVerticalSpacing(kSpacing);
  layout->addLayout(grid);
  MakeFields(*grid);
  list_ = new RenameListPane(this);
  layout->addWidget(list_, 1);
  layout->addWidget(MakeButtons());
  ShowForm();
  Rebuild(Tell::Quietly);
  ConnectFields();
  style_->setFocus();
  const QSize room = screen()->availableSize() - kRoomForFrame;
  setMinimumSize(kSmallestSize.boundedTo(room));
  resize(kFirstSize.boundedTo(room));
}

CBatchRenameDialog::~CBatchRenameDialog() = default;

void CBatchRenameDialog::MakeFields(QGridLayout& grid) {
  style_ = new QComboBox(this);
  for (const auto& row : BuiltInStyles()) style_->addItem(ToQString(row.name));
  for (const auto& custom : form_.Choices().custom) style_->addItem(ToLabel(custom.name));
  style_->setCurrentIndex(form_.Choices().row);
  AddField(grid, kStyleLabel, style_);
  name_ = new QLineEdit(this);
  name_->setMaxLength(kLongestText);
  AddField(grid, kNameLabel, name_);
  MakeFormatField(grid);
  MakeNumberFields(grid);
  sort_ = MakeChoice(kSortTexts, static_cast<int>(form_.Choices().sort), this);
  sort_->setToolTip(QLatin1String(kSortTip));
  AddField(grid, kSortLabel, sort_);
  case_ = MakeChoice(kCaseTexts, static_cast<int>(form_.Choices().caseMode), this);
  AddField(grid, kCaseLabel, case_);
}

void CBatchRenameDialog::MakeFormatField(QGridLayout& grid) {
  format_ = new QLineEdit(this);
  format_->setMaxLength(kLongestText);
  insert_ = new QPushButton(QLatin1String(kInsertToken), this);
  insert_->setAutoDefault(false);
  insert_->setMenu(new QMenu(insert_));
  for (const auto& [title, tokens] : TokenHelpGroups()) {
    platform::ui::AddTokens(
        *insert_->menu(), ToQString(title), tokens, [this](std::string_view token) { return ExampleOf(token); },
        platform::ui::InserterInto(*format_));
  }
  AddField(grid, kFormatLabel, format_, SideBySide(format_, insert_, this));
}

void CBatchRenameDialog::MakeNumberFields(QGridLayout& grid) {
  digits_ = new QSpinBox(this);
  digits_->setRange(1, static_cast<int>(kMostDigits));
  AddField(grid, kDigitsLabel, digits_, SideBySide(digits_, new QWidget(this), this));
  firstNumber_ = new QSpinBox(this);
  firstNumber_->setRange(0, static_cast<int>(kLastNumber));
  continuous_ = new QCheckBox(QLatin1String(kContinueNumbering), this);
  continuous_->setChecked(form_.Choices().continuous);
  AddField(grid, kFirstNumberLabel, firstNumber_, SideBySide(firstNumber_, continuous_, this));
  for (auto* box : {digits_, firstNumber_}) {
    box->setFixedWidth(firstNumber_->sizeHint().width());
    box->setFont(platform::ui::WithTabularFigures(font()));
  }
}

QWidget* CBatchRenameDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  auto* rename =
      buttons->addButton(QLatin1String(input_.targets == RenameTargets::Selected ? kRenameSelected : kRenameAll),
                         QDialogButtonBox::AcceptRole);
  rename->setDefault(true);
  buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
  connect(buttons, &QDialogButtonBox::accepted, this, &CBatchRenameDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CBatchRenameDialog::reject);
  buttons->addButton(platform::ui::MakeHelpButton(platform::HelpPage::Rename, *this), QDialogButtonBox::HelpRole);
  return buttons;
}

/// What stands in the form is typed bytes: a field that nobody edits gives nothing back.
void CBatchRenameDialog::ConnectFields() {
  connect(style_, &QComboBox::currentIndexChanged, this, [this](int row) {
    form_.ChooseRow(row);
    ShowForm();
    Rebuild(Tell::ByBox);
  });
  connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) {
    form_.SetName(text.toStdString());
    style_->setItemText(style_->currentIndex(), text);
  });
  connect(format_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text == ToLabel(form_.Format())) return;
    form_.SetFormat(text.toStdString());
    ShowForm();
    Rebuild(Tell::Quietly);
  });
  connect(digits_, &QSpinBox::valueChanged, this, [this](int digits) {
    form_.SetDigits(digits);
    Rebuild(Tell::Quietly);
  });
  connect(firstNumber_, &QSpinBox::valueChanged, this, [this](int number) {
    form_.SetFirstNumber(number);
    Rebuild(Tell::Quietly);
  });
  connect(continuous_, &QCheckBox::toggled, this, [this](bool on) {
    form_.SetContinuous(on);
    ShowForm();
    Rebuild(Tell::Quietly);
  });
  connect(sort_, &QComboBox::currentIndexChanged, this, [this](int sort) {
    form_.SetSort(static_cast<RenameSort>(sort));
    Rebuild(Tell::ByBox);
  });
  connect(case_, &QComboBox::currentIndexChanged, this, [this](int mode) {
    form_.SetCase(static_cast<catalogue::CaseMode>(mode));
    Rebuild(Tell::Quietly);
  });
}

/// What one token alone gives for the first image of the list.
std::string CBatchRenameDialog::ExampleOf(std::string_view token) const {
  if (names_.rows.empty()) return {};
  auto style = form_.Style();
  style.format = token;
  style.caseMode = catalogue::CaseMode::Unchanged;
  const auto first = BuildNewNames({input_.images[names_.rows.front().given]}, style, input_.otherFiles);
  return std::string(platform::SplitPath(first.rows.front().newName).stem);
}

void CBatchRenameDialog::ShowNumber(QSpinBox& box, const NumberField& field) {
  const QSignalBlocker quiet(box);
  box.setValue(static_cast<int>(field.value));
  box.setEnabled(field.use != FieldUse::Off);
  box.setReadOnly(field.use == FieldUse::ReadOnly);
  box.setButtonSymbols(field.use == FieldUse::Edit ? QSpinBox::UpDownArrows : QSpinBox::NoButtons);
  box.setToolTip(PlainToolTip(ToQString(field.reason)));
  box.setAccessibleDescription(ToQString(field.reason));
}

void CBatchRenameDialog::ShowForm() {
  const bool custom = form_.IsCustom();
  const auto reason = custom ? QString() : QLatin1String(kOnlyCustomStyles);
  const std::pair<QLineEdit*, std::string> lines[] = {{name_, form_.Name()}, {format_, form_.Format()}};
  for (const auto& [line, bytes] : lines) {
    const QSignalBlocker quiet(line);
    if (line->text() != ToLabel(bytes)) line->setText(ToLabel(bytes));
    line->setReadOnly(!custom);
    line->setToolTip(PlainToolTip(reason));
  }
  name_->setEnabled(custom);
  insert_->setEnabled(custom);
  insert_->setToolTip(custom ? QLatin1String(kInsertTip) : reason);
  ShowNumber(*digits_, form_.Digits());
  ShowNumber(*firstNumber_, form_.FirstNumber());
}

void CBatchRenameDialog::Rebuild(Tell tell) {
  names_ = BuildNewNames(input_.images, form_.Style(), input_.otherFiles);
  list_->Show(names_);
  format_->setAccessibleDescription(list_->ProblemText());
  if (tell == Tell::ByBox && names_.HasConflict()) platform::ui::QtInteraction(this).message(ConflictMessage(names_));
}

void CBatchRenameDialog::accept() {
  try {
    check_(names_, form_.Style());
  } catch (const platform::UserError& error) {
    platform::ui::QtInteraction(this).message({.text = error.what(), .icon = platform::BoxIcon::Error});
    list_->GoToFirstProblem();
    return;
  }
  QDialog::accept();
}

}  // namespace ml::batch::ui
