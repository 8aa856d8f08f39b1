#include "app/dialogs/refusal_box.h"

#include <QMessageBox>

#include "platform/ui/qt_text.h"

namespace ml::app {

void TellRefusal(QWidget& dialog, const std::string& sentence) {
  QMessageBox box(QMessageBox::Warning, QStringLiteral("Marrowlantern"), platform::ui::ToQString(sentence),
                  QMessageBox::Ok, &dialog);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace ml::app
