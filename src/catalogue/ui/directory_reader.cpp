#include "catalogue/ui/directory_reader.h"

#include <utility>

namespace ml::catalogue::ui {

DirectoryReader::DirectoryReader(QObject* parent)
    : QObject(parent), thread_([this](const std::stop_token& stop) { Run(stop); }) {}

DirectoryReader::~DirectoryReader() {
  thread_.request_stop();
  thread_.join();
}

void DirectoryReader::Read(const std::string& directory, bool withHidden) {
  {
    const std::lock_guard hold(lock_);
    requests_.push_back({directory, withHidden});
  }
  wake_.notify_one();
}

void DirectoryReader::Run(const std::stop_token& stop) {
  while (true) {
    Request request;
    {
      std::unique_lock hold(lock_);
      if (!wake_.wait(hold, stop, [this] { return !requests_.empty(); })) return;
      request = std::move(requests_.front());
      requests_.pop_front();
    }
    auto found = ListSubdirectories(request.directory, request.withHidden, stop);
    if (stop.stop_requested()) return;
    QMetaObject::invokeMethod(
        this,
        [this, directory = std::move(request.directory), subdirectories = std::move(found)] {
          Q_EMIT listed(directory, subdirectories);
        },
        Qt::QueuedConnection);
  }
}

}  // namespace ml::catalogue::ui
