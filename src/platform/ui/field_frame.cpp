#include "platform/ui/field_frame.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QVariant>

namespace ml::platform::ui {
namespace {

constexpr const char* kProperty = "isField";

/// The toolkit repaints the content of such a widget with the focus, not its frame.
class FrameUpdater final : public QObject {
 public:
  explicit FrameUpdater(QAbstractScrollArea& area) : QObject(&area), area_(area) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) area_.update();
    return QObject::eventFilter(watched, event);
  }

 private:
  QAbstractScrollArea& area_;
};

}  // namespace

void MarkAsField(QAbstractScrollArea& area) {
  area.setProperty(kProperty, true);
  area.installEventFilter(new FrameUpdater(area));
}

bool IsField(const QWidget* widget) { return widget != nullptr && widget->property(kProperty).toBool(); }

}  // namespace ml::platform::ui
