#include "app/dialogs/date_shift_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <array>

#include "catalogue/job_names.h"
#include "platform/dates.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

struct Unit {
  const char* label;
  std::int64_t seconds;
  int limit;
};
constexpr std::array kUnits = {Unit{"&days", 86'400, 36'500}, Unit{"&hours", 3'600, 23}, Unit{"&minutes", 60, 59},
                               Unit{"se&conds", 1, 59}};

class DateShiftDialog final : public QDialog {
 public:
  DateShiftDialog(QWidget& parent, const DateShiftQuestion& question) : QDialog(&parent), question_(question) {
    setWindowTitle(QLatin1String(catalogue::kAdjustDateJob));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Correct the date and time that the camera recorded:")));
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    direction_.addItems({QStringLiteral("Later by"), QStringLiteral("Earlier by")});
    direction_.setAccessibleName(QStringLiteral("Direction"));
    row->addWidget(&direction_);
    connect(&direction_, &QComboBox::currentIndexChanged, this, &DateShiftDialog::ShowExample);
    for (std::size_t i = 0; i < kUnits.size(); ++i) {
      auto* label = new QLabel(QString::fromLatin1(kUnits[i].label));
      boxes_[i].setRange(0, kUnits[i].limit);
      label->setBuddy(&boxes_[i]);
      row->addWidget(&boxes_[i]);
      row->addWidget(label);
      connect(&boxes_[i], &QSpinBox::valueChanged, this, &DateShiftDialog::ShowExample);
    }
    row->addStretch();
    example_.setTextFormat(Qt::PlainText);
    layout->addWidget(&example_);
    fileTimes_.setText(QStringLiteral("Move the times of the &files as far"));
    fileTimes_.setChecked(question.fileTimes);
    layout->addWidget(&fileTimes_);
    AddButtons(*layout);
    boxes_[1].setFocus();
    ShowExample();
  }

  DateShift Shift() const {
    DateShift shift{.all = all_, .fileTimes = fileTimes_.isChecked()};
    for (std::size_t i = 0; i < kUnits.size(); ++i) shift.seconds += boxes_[i].value() * kUnits[i].seconds;
    if (direction_.currentIndex() == 1) shift.seconds = -shift.seconds;
    return shift;
  }

 private:
  void AddButtons(QVBoxLayout& layout) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    auto* all = buttons->addButton(QStringLiteral("Update &All"), QDialogButtonBox::AcceptRole);
    auto* selected = buttons->addButton(QStringLiteral("Update &Selected"), QDialogButtonBox::AcceptRole);
    selected->setEnabled(!question_.nothingSelected);
    layout.addWidget(buttons);
    (question_.nothingSelected ? all : selected)->setDefault(true);  // a dialog must have the button first
    connect(all, &QPushButton::clicked, this, [this] { all_ = true; });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  }

  void ShowExample() {
    auto text = ToQString(question_.exampleName) + QStringLiteral(": ");
    if (question_.exampleTime) {
      const auto time = *question_.exampleTime;
      text += ToQString(platform::ExifDateText(time)) + QStringLiteral("  \u2192  ") +
              ToQString(platform::ExifDateText(time + static_cast<std::time_t>(Shift().seconds)));
    } else {
      text += QStringLiteral("records no date");
    }
    example_.setText(text);
  }

  const DateShiftQuestion question_;
  QComboBox direction_;
  std::array<QSpinBox, kUnits.size()> boxes_;
  QLabel example_;
  QCheckBox fileTimes_;
  bool all_ = false;
};

}  // namespace

std::optional<DateShift> AskDateShift(QWidget& parent, const DateShiftQuestion& question) {
  DateShiftDialog dialog(parent, question);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  const auto shift = dialog.Shift();
  if (shift.seconds == 0) return std::nullopt;
  return shift;
}

}  // namespace ml::app
