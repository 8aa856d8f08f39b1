#pragma once

#include <string>
#include <vector>

#include "platform/worker_gate.h"

namespace ml::catalogue {

/// The gate through which the catalogue's list changes as a whole. The worker is one; code without a worker
/// uses DirectListGate. All functions are called on the thread that owns the list.
class ListGate : public platform::WorkerGate {
 public:
  /// The list becomes `paths`, all marks off.
  virtual void LoadList(std::vector<std::string> paths) = 0;
  /// See ImageList::Reorder. An empty `paths` does nothing.
  virtual void Reorder(const std::vector<std::string>& paths) = 0;
  /// See ImageList::MoveSelectedTo.
  virtual void MoveSelectedTo(int position) = 0;
};

}  // namespace ml::catalogue
