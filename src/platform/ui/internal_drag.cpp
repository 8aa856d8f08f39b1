#include "platform/ui/internal_drag.h"

#include <QCoreApplication>
#include <QMimeData>

namespace ml::platform::ui {
namespace {

QString Format() { return QStringLiteral("application/x-marrowlantern-drag"); }
QByteArray ThisRun() { return QByteArray::number(QCoreApplication::applicationPid()); }

}  // namespace

void MarkInternalDrag(QMimeData& data) { data.setData(Format(), ThisRun()); }

bool IsInternalDrag(const QMimeData& data) { return data.data(Format()) == ThisRun(); }

}  // namespace ml::platform::ui
