#pragma once

#include <QObject>

#include "app/theme.h"

class QDBusVariant;

namespace ml::app {

/// Whether the desktop is light or dark: what its settings portal says, else what the toolkit's own palette
/// looks like.
class SystemScheme final : public QObject {
  Q_OBJECT

 public:
  /// To be made before ApplyTheme() replaces the palette.
  explicit SystemScheme(QObject* parent);
  Scheme Current() const { return current_; }

 Q_SIGNALS:
  void changed(ml::app::Scheme scheme);

 private Q_SLOTS:
  void TakeSetting(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  Scheme current_ = Scheme::Light;
};

}  // namespace ml::app
