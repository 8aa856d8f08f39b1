#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/loaded_catalogue.h"
#include "cli/sort_option.h"

namespace ml::cli {

void AddListCommand(CLI::App& program, RunState& state) {
  struct Arguments {
    std::vector<std::string> paths;
    SortOption sort;
    bool hidden = false;
  };
  auto* command = program.add_subcommand("list", "List the images of a directory, or files, in their order");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("paths", arguments->paths, "One directory, or files")->required();
  AddSortOption(*command, arguments->sort);
  command->add_flag("--hidden", arguments->hidden, "Also hidden files");
  command->callback([arguments, &state] {
    state.action = [arguments, &state] {
      if (arguments->hidden) state.settings.catalogue.showHiddenDirectories = 1;
      LoadedCatalogue loaded(state, arguments->paths);
      ApplySort(arguments->sort, loaded);
      loaded.Print();
    };
  });
}

}  // namespace ml::cli
