#pragma once

#include <utility>

#include "catalogue/image_list.h"
#include "catalogue/list_gate.h"

namespace ml::catalogue {

/// Changes the list at once: for code that has no thumbnails.
class DirectListGate final : public ListGate {
 public:
  explicit DirectListGate(ImageList& list) : list_(list) {}
  void Pause() override {}
  void Resume() override {}
  void LoadList(std::vector<std::string> paths) override { list_.Assign(std::move(paths)); }
  void Reorder(const std::vector<std::string>& paths) override {
    if (!paths.empty()) list_.Reorder(paths);
  }
  void MoveSelectedTo(int position) override { list_.MoveSelectedTo(position); }

 private:
  ImageList& list_;
};

}  // namespace ml::catalogue
