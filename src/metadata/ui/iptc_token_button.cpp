#include "metadata/ui/iptc_token_button.h"

#include <QApplication>
#include <QMenu>
#include <QShortcut>

#include "metadata/iptc/iptc_sheet_values.h"
#include "metadata/ui/format_token_menu.h"
#include "metadata/ui/messages.h"

namespace ml::metadata::ui {
namespace {

IptcFieldEditor* FieldAround(QWidget* widget) {
  while (widget != nullptr && qobject_cast<IptcFieldEditor*>(widget) == nullptr) widget = widget->parentWidget();
  return static_cast<IptcFieldEditor*>(widget);
}

}  // namespace

IptcTokenButton::IptcTokenButton(const platform::ui::TokenExample& example, QWidget* parent)
    : QPushButton(QLatin1String(kIptcInsert), parent) {
  setAutoDefault(false);
  setMenu(new QMenu(this));
  AddFormatTokens(*menu(), example, [this](const QString& token) { Insert(token); });
  auto* key = new QShortcut(Qt::CTRL | Qt::Key_T, this);
  connect(key, &QShortcut::activated, this, &QPushButton::showMenu);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FocusChanged(now); });
  Refresh();
}

/// The keyboard may leave it on its way out.
IptcTokenButton::~IptcTokenButton() { disconnect(qApp, nullptr, this, nullptr); }

void IptcTokenButton::FocusChanged(QWidget* now) {
  auto* field = FieldAround(now);
  if (field == nullptr || field->window() != window()) return;
  field_ = field;
  Refresh();
}

void IptcTokenButton::Refresh() {
  const bool isThere = field_ != nullptr && field_->isVisibleTo(window()) && field_->isEnabled();
  const bool takes = isThere && TakesTokens(field_->Dataset());
  setEnabled(takes);
  const auto tip = QLatin1String(takes ? kIptcInsertTip : isThere ? kIptcNoTokens : kIptcNoField);
  setToolTip(tip);
  setAccessibleDescription(tip);
}

void IptcTokenButton::Insert(const QString& token) {
  if (field_ != nullptr && isEnabled()) field_->Insert(token);
}

}  // namespace ml::metadata::ui
