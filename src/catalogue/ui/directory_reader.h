#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "catalogue/ui/subdirectories.h"

namespace ml::catalogue::ui {

/// Reads directories on a thread of its own, one after the other: a slow or huge one never holds up the window.
class DirectoryReader final : public QObject {
  Q_OBJECT

 public:
  explicit DirectoryReader(QObject* parent);
  /// Stops and joins.
  ~DirectoryReader() override;

  /// The answer comes by listed().
  void Read(const std::string& directory, bool withHidden);

 Q_SIGNALS:
  /// On this object's thread.
  void listed(const std::string& directory, const std::vector<ml::catalogue::ui::Subdirectory>& subdirectories);

 private:
  struct Request {
    std::string directory;
    bool withHidden = false;
  };
  void Run(const std::stop_token& stop);

  std::mutex lock_;
  std::condition_variable_any wake_;
  std::deque<Request> requests_;  ///< guarded by lock_
  std::jthread thread_;           ///< last: it uses all of the above
};

}  // namespace ml::catalogue::ui
