#include "metadata/ui/iptc_date_button.h"

#include <QDateTimeEdit>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QMenu>
#include <QPushButton>

#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {
namespace {

/// Whether there is a date of this kind now.
bool IsThere(IptcDateSource source, const IptcKnownTimes& times) {
  return (source != IptcDateSource::Exif || times.shot != 0) && (source != IptcDateSource::File || times.file != 0);
}

}  // namespace

IptcDateButton::IptcDateButton(IptcDateKind kind, std::function<IptcKnownTimes()> times, QWidget* parent)
    : QPushButton(QStringLiteral("Set"), parent), times_(std::move(times)) {
  const bool created = kind == IptcDateKind::Created;
  setAccessibleName(created ? QStringLiteral("Set date and time created")
                            : QStringLiteral("Set release date and time"));
  setToolTip(accessibleName());
  setAutoDefault(false);
  auto* menu = new QMenu(this);
  for (const auto& choice : IptcDateChoices(kind)) {
    auto* action = menu->addAction(platform::ui::ToQString(choice.label));
    connect(action, &QAction::triggered, this, [this, &choice] { Choose(choice); });
    connect(menu, &QMenu::aboutToShow, action,
            [this, &choice, action] { action->setEnabled(IsThere(choice.source, times_())); });
  }
  setMenu(menu);
}

void IptcDateButton::Choose(const IptcDateChoice& choice) {
  const auto times = times_();
  switch (choice.source) {
    case IptcDateSource::Exif:
      return Q_EMIT chosen(times.shot);
    case IptcDateSource::File:
      return Q_EMIT chosen(times.file);
    case IptcDateSource::Days:
      return Q_EMIT chosen(DaysFrom(times.now, choice.days));
    case IptcDateSource::Select:
      return Select();
    case IptcDateSource::Clear:
      return Q_EMIT chosen(std::nullopt);
  }
}

void IptcDateButton::Select() {
  QDialog dialog(this);
  dialog.setWindowTitle(QStringLiteral("Select Date/Time"));
  auto* layout = new QFormLayout(&dialog);
  auto* edit = new QDateTimeEdit(QDateTime::fromSecsSinceEpoch(times_().now), &dialog);
  edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  edit->setCalendarPopup(true);
  edit->setDateRange(QDate(1900, 1, 1), QDate(2100, 12, 31));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Set"));
  buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout->addRow(QStringLiteral("&Date and time:"), edit);
  layout->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return;
  Q_EMIT chosen(static_cast<std::time_t>(edit->dateTime().toSecsSinceEpoch()));
}

}  // namespace ml::metadata::ui
