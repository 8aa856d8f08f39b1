#pragma once

#include <QObject>
#include <QTimer>

namespace ml::platform::ui {

/// Tells when cards, disks and shares come and go.
class VolumeWatcher final : public QObject {
  Q_OBJECT

 public:
  /// Without a mount table to look at it stays silent.
  explicit VolumeWatcher(QObject* parent);
  ~VolumeWatcher() override;

 Q_SIGNALS:
  /// Once for a burst of mounts.
  void changed();

 private:
  const int table_;
  QTimer rest_;
};

}  // namespace ml::platform::ui
