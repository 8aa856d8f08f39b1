#include "batch/ui/screen_saver_hold.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <optional>

namespace ml::batch::ui {
namespace {

QDBusMessage Call(const char* method) {
  return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.ScreenSaver"),
                                        QStringLiteral("/org/freedesktop/ScreenSaver"),
                                        QStringLiteral("org.freedesktop.ScreenSaver"), QLatin1String(method));
}

void Release(uint number) {
  auto question = Call("UnInhibit");
  question << number;
  QDBusConnection::sessionBus().asyncCall(question);
}

}  // namespace

struct ScreenSaverHold::Cookie {
  std::optional<uint> number;  ///< once the desktop has answered
  bool over = false;
};

ScreenSaverHold::ScreenSaverHold(const QString& reason) {
  // Asking for the bus where there is none could start one.
  if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return;
  auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto question = Call("Inhibit");
  question << QStringLiteral("Marrowlantern") << reason;
  cookie_ = std::make_shared<Cookie>();
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, cookie = cookie_] {
    const QDBusPendingReply<uint> answer = *watcher;
    watcher->deleteLater();
    if (answer.isError()) return;
    cookie->number = answer.value();
    if (cookie->over) Release(answer.value());
  });
}

ScreenSaverHold::~ScreenSaverHold() {
  if (!cookie_) return;
  cookie_->over = true;
  if (const auto number = cookie_->number) Release(*number);
}

}  // namespace ml::batch::ui
