#include "app/system_scheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>

namespace ml::app {
namespace {

constexpr QLatin1String kService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String kGroup("org.freedesktop.appearance");
constexpr QLatin1String kKey("color-scheme");
/// The start does not wait for a portal that hangs.
constexpr int kPatienceMs = 300;

Scheme SchemeOfPalette() {
  return QGuiApplication::palette().color(QPalette::Window).lightness() < 128 ? Scheme::Dark : Scheme::Light;
}

/// 1 asks for dark, 2 for light, 0 has no wish.
Scheme SchemeOfNumber(uint number, Scheme otherwise) {
  return number == 1 ? Scheme::Dark : number == 2 ? Scheme::Light : otherwise;
}

/// Older portals wrap the value in a second variant.
uint Unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt();
}

}  // namespace

SystemScheme::SystemScheme(QObject* parent) : QObject(parent), current_(SchemeOfPalette()) {
  auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto question = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
  question << QString(kGroup) << QString(kKey);
  const auto answer = bus.call(question, QDBus::Block, kPatienceMs);
  if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
    current_ = SchemeOfNumber(Unwrapped(answer.arguments().constFirst()), current_);
  }
  bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
              SLOT(TakeSetting(QString, QString, QDBusVariant)));
}

void SystemScheme::TakeSetting(const QString& group, const QString& key, const QDBusVariant& value) {
  if (group != kGroup || key != kKey) return;
  const auto scheme = SchemeOfNumber(Unwrapped(value.variant()), Scheme::Light);
  if (scheme == current_) return;
  current_ = scheme;
  Q_EMIT changed(scheme);
}

}  // namespace ml::app
