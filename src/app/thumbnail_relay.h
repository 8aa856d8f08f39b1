#pragma once

#include <QObject>

namespace ml::app {

/// Carries the worker's word from its threads to the window's. Lives longer than the worker.
class ThumbnailRelay final : public QObject {
  Q_OBJECT

 Q_SIGNALS:
  void ready(int index);
};

}  // namespace ml::app
