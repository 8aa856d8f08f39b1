#include "platform/ui/dialog_buttons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLayout>

namespace ml::platform::ui {

void AddOkAndCancel(QDialog& dialog, const std::function<void()>& accept) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  dialog.layout()->addWidget(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog,
                   [&dialog, accept] { accept ? accept() : dialog.accept(); });
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
}

}  // namespace ml::platform::ui
