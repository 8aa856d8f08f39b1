#include "platform/ui/volume_watcher.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace ml::platform::ui {
namespace {

/// A disk with several partitions mounts them one after the other.
constexpr int kRestMilliseconds = 400;

}  // namespace

VolumeWatcher::VolumeWatcher(QObject* parent)
    : QObject(parent), table_(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, &VolumeWatcher::changed);
  if (table_ < 0) return;
  // The system marks the table as exceptional, once, whenever something is mounted or goes.
  auto* notifier = new QSocketNotifier(table_, QSocketNotifier::Exception, this);
  connect(notifier, &QSocketNotifier::activated, &rest_, qOverload<>(&QTimer::start));
}

VolumeWatcher::~VolumeWatcher() {
  if (table_ >= 0) ::close(table_);
}

}  // namespace ml::platform::ui
