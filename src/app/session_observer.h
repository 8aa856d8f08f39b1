#pragma once

#include <string>

#include "app/command_state.h"

namespace ml::app {

/// Whoever shows the session.
class SessionObserver {
 public:
  virtual ~SessionObserver() = default;
  virtual void DirectoryShown(const std::string& directory) = 0;
  virtual void ListReplaced() = 0;
  virtual void ListReordered() = 0;
  virtual void ShowImage(int index) = 0;
  virtual void RecentDirectoriesChanged() = 0;
  /// Sets what only the panes know: where the keys go.
  virtual void AddPaneFacts(CommandState& state) const = 0;
};

}  // namespace ml::app
