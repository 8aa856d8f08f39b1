#pragma once

#include <optional>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "catalogue/direct_list_gate.h"
#include "catalogue/image_list.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "platform/interaction.h"

namespace ml::cli {

/// The catalogue as the commands list, order and tags use it: loaded once, nothing saved unless asked for.
/// Boxes of the engine become lines on standard error.
class LoadedCatalogue final : private catalogue::CatalogueObserver, private platform::Interaction {
 public:
  /// Shows one directory. Throws UserError if there is none.
  LoadedCatalogue(RunState& state, const std::string& directory);
  /// Shows what `given` names: one directory, or files. Throws UserError if there is nothing to show.
  LoadedCatalogue(RunState& state, const std::vector<std::string>& given);

  catalogue::ImageList list;
  catalogue::Catalogue catalogue;

  /// The object that list, order and tags print, or lines for people.
  void Print() const;
  /// The full path of a file of the directory, named by its name or by a path. Throws UserError if the
  /// catalogue has no such entry, or if the directory's own files cannot name it.
  std::string Entry(const std::string& name) const;

 private:
  explicit LoadedCatalogue(RunState& state);
  void DirectoryShown(const std::string&) override {}
  void DirectoryVisited(const std::string&) override {}
  void ListReplaced() override {}
  void ListReordered() override {}
  void ShowImage(int) override {}
  void message(const platform::MessageBox& box) override;
  platform::Button ask(const platform::MessageBox& box) override;
  CheckedAnswer askCheck(const platform::MessageBox& box, const std::string& text) override;
  std::optional<std::string> saveAs(const SaveAsQuestion&) override { return std::nullopt; }
  platform::FileExistsAnswer fileExists(const std::string&) override { return platform::FileExistsAnswer::Cancel; }

  void LoadDirectory(const std::string& given);
  void LoadFiles(const std::vector<std::string>& given);
  bool CanBeListed(const std::string& given) const;
  Json ToJson() const;

  RunState& state_;
  catalogue::DirectListGate gate_;
  GivenPaths paths_;
  std::vector<std::string> warnings_;
  std::string directory_;  ///< as given
};

}  // namespace ml::cli
