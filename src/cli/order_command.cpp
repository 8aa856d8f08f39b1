#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/loaded_catalogue.h"
#include "cli/output_file.h"
#include "cli/sort_option.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

struct OrderArguments {
  std::string directory, save, load;
  std::vector<std::string> custom;
  SortOption sort;
  bool taggedFirst = false, overwrite = false, dryRun = false;
};

void RunOrder(const OrderArguments& arguments, RunState& state) {
  LoadedCatalogue loaded(state, arguments.directory);
  auto& list = loaded.list;
  if (!arguments.load.empty() && !loaded.catalogue.LoadCustomOrder(platform::AbsolutePath(arguments.load))) {
    throw platform::UserError(arguments.load + ": holds no order that can be read");
  }
  ApplySort(arguments.sort, loaded);
  if (!arguments.custom.empty()) {
    std::vector<std::string> order;
    for (const auto& name : arguments.custom) order.push_back(loaded.Entry(name));
    list.customOrder = std::move(order);
    loaded.catalogue.SortBy(catalogue::SortMethod::Custom);
  }
  if (arguments.taggedFirst) loaded.catalogue.MoveTaggedToStart();
  if (!arguments.dryRun) {
    if (!loaded.catalogue.SaveCustomOrder()) state.Fail(arguments.directory + ": the order could not be written");
    if (!arguments.save.empty() && MayWrite(arguments.save, arguments.overwrite, state)) {
      loaded.catalogue.SaveCustomOrderAs(platform::AbsolutePath(arguments.save));
    }
  }
  loaded.Print();
}

}  // namespace

void AddOrderCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("order", "Change the order of a directory's images and write its order file");
  auto arguments = std::make_shared<OrderArguments>();
  command->add_option("directory", arguments->directory, "The directory")->required();
  command->add_option("--custom", arguments->custom, "Files that come first, in this order");
  AddSortOption(*command, arguments->sort);
  command->add_flag("--tagged-first", arguments->taggedFirst, "Move tagged images to the start");
  command->add_option("--save", arguments->save, "Also write the order to this file");
  command->add_option("--load", arguments->load, "Take the order from this file");
  command->add_flag("--overwrite", arguments->overwrite, "Let --save replace a file");
  command->add_flag("--dry-run", arguments->dryRun, "Write nothing");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunOrder(*arguments, state); }; });
}

}  // namespace ml::cli
