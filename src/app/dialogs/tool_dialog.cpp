#include "app/dialogs/tool_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/dialogs/refusal_box.h"
#include "platform/ui/field_label.h"
#include "platform/ui/qt_text.h"
#include "platform/ui/remark.h"

namespace ml::app {

using platform::ui::PlainToolTip;
using platform::ui::ToQString;

namespace {

QString Images(std::size_t count) {
  return count == 1 ? QStringLiteral("1 image") : QStringLiteral("%1 images").arg(count);
}

}  // namespace

ToolDialog::ToolDialog(QWidget& parent, const Texts& texts, const ToolImages& images)
    : QDialog(&parent), images_(images) {
  setWindowTitle(ToQString(texts.title));
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(12);
  fields_ = new QVBoxLayout;
  layout->addLayout(fields_, 1);
  const bool nothing = images.selected.empty();
  auto* remark = platform::ui::MakeRemark(this);
  if (nothing) platform::ui::SetRemarkText(*remark, std::string(texts.pleaseSelect));
  layout->addWidget(remark);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  auto* all = buttons->addButton(ToQString(texts.all), QDialogButtonBox::ActionRole);
  auto* selected = buttons->addButton(ToQString(texts.selected), QDialogButtonBox::ActionRole);
  selected->setEnabled(!nothing);
  selected->setToolTip(nothing ? PlainToolTip(ToQString(texts.pleaseSelect)) : Images(images.selected.size()));
  all->setToolTip(Images(images.all.size()));
  layout->addWidget(buttons);
  (nothing ? all : selected)->setDefault(true);  // a dialog must have the button first
  connect(all, &QPushButton::clicked, this, [this] { Answer(true); });
  connect(selected, &QPushButton::clicked, this, [this] { Answer(false); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

bool ToolDialog::RunAt(std::string& place) {
  restoreGeometry(QByteArray(place.data(), static_cast<qsizetype>(place.size())));
  const bool accepted = exec() == QDialog::Accepted;
  place = saveGeometry().toStdString();
  return accepted;
}

QLabel* ToolDialog::AddField(QGridLayout& grid, const char* label, QWidget& field, QWidget& focus) {
  const int row = grid.rowCount();
  auto* text = platform::ui::MakeFieldLabel(label, focus, field.parentWidget());
  // In the middle of the line, not of what may stand below it.
  text->setMinimumHeight(focus.sizeHint().height());
  grid.addWidget(text, row, 0, Qt::AlignTop);
  grid.addWidget(&field, row, 1);
  return text;
}

void ToolDialog::Answer(bool all) {
  if (const auto refusal = Refusal(all ? images_.all : images_.selected)) return TellRefusal(*this, *refusal);
  all_ = all;
  accept();
}

}  // namespace ml::app
