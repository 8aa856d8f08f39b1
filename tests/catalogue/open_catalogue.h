#pragma once

#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "catalogue/direct_list_gate.h"
#include "catalogue/image_directory.h"
#include "support/fakes.h"

namespace ml::test {

/// A catalogue with a script for the questions and a record of what it tells.
struct OpenCatalogue final : catalogue::CatalogueObserver {
  catalogue::ImageList list;
  catalogue::DirectListGate gate{list};
  ScriptedInteraction ask;
  Names told;  ///< "shown DIR", "visited DIR", "replaced", "reordered", "image N"
  catalogue::Catalogue catalogue{list, gate, ask, *this};

  OpenCatalogue() = default;
  explicit OpenCatalogue(const std::string& directory) { catalogue.LoadDirectory(directory, {}); }

  Names Files() const { return FileNames(list.files); }
  Names Tagged() const { return FileNames(list.TaggedPaths()); }
  void Tag(const Names& names) {
    for (const auto& name : names) list.SetTagByPath(list.Directory() + name, true);
  }
  /// Drags thumbnails until they begin with `names`, in this order.
  void Drag(const Names& names) {
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
      list.SelectOnly(list.IndexOfPath(list.Directory() + *name));
      catalogue.MoveSelectedTo(0);
    }
  }

  void DirectoryShown(const std::string& directory) override { told.push_back("shown " + directory); }
  void DirectoryVisited(const std::string& directory) override { told.push_back("visited " + directory); }
  void ListReplaced() override { told.push_back("replaced"); }
  void ListReordered() override { told.push_back("reordered"); }
  void ShowImage(int index) override {
    told.push_back("image " + std::to_string(index));
    list.currentIndex = index;
    list.currentPath = list.ValidIndex(index) ? list.files[static_cast<std::size_t>(index)] : std::string();
  }
};

}  // namespace ml::test
