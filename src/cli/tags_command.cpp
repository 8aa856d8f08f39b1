#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/loaded_catalogue.h"
#include "cli/output_file.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::cli {
namespace {

using catalogue::EarlierTags, catalogue::TagMatch;

struct TagsArguments {
  std::string directory, save, load, merge;
  std::vector<std::string> add, remove;
  bool clear = false, ignoreExtension = false, overwrite = false, dryRun = false;

  bool Changes() const { return clear || !add.empty() || !remove.empty() || !load.empty() || !merge.empty(); }
};

void SetTags(const std::vector<std::string>& names, bool on, LoadedCatalogue& loaded, RunState& state) {
  for (const auto& name : names) {
    try {
      loaded.list.SetTagByPath(loaded.Entry(name), on);
    } catch (const platform::UserError& error) {
      state.Fail(error.what());
    }
  }
}

void LoadTags(const std::string& file, EarlierTags earlier, TagMatch match, LoadedCatalogue& loaded) {
  if (file.empty()) return;
  if (!platform::IsRegularFile(file)) throw platform::UserError(file + ": is no file that can be read");
  loaded.catalogue.LoadTagList(platform::AbsolutePath(file), earlier, match);
}

void RunTags(const TagsArguments& arguments, RunState& state) {
  LoadedCatalogue loaded(state, arguments.directory);
  const bool ignoreExtension = arguments.ignoreExtension || state.settings.catalogue.tagsIgnoreExt != 0;
  const auto match = ignoreExtension ? TagMatch::StemOnly : TagMatch::StemAndExtension;
  if (arguments.clear) loaded.list.TagNone();
  LoadTags(arguments.load, EarlierTags::Drop, match, loaded);
  LoadTags(arguments.merge, EarlierTags::Keep, match, loaded);
  SetTags(arguments.add, true, loaded, state);
  SetTags(arguments.remove, false, loaded, state);
  if (arguments.Changes() && !arguments.dryRun && !loaded.catalogue.SaveTags()) {
    state.Fail(arguments.directory + ": the tags could not be written");
  }
  const bool save = !arguments.save.empty() && !arguments.dryRun;
  if (save && MayWrite(arguments.save, arguments.overwrite, state)) {
    loaded.catalogue.SaveTagList(platform::AbsolutePath(arguments.save));
  }
  loaded.Print();
}

}  // namespace

void AddTagsCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("tags", "Show or change the tags of a directory's images");
  auto arguments = std::make_shared<TagsArguments>();
  command->add_option("directory", arguments->directory, "The directory")->required();
  command->add_option("--add", arguments->add, "Tag these files");
  command->add_option("--remove", arguments->remove, "Untag these files");
  command->add_flag("--clear", arguments->clear, "Untag all, before anything else");
  command->add_option("--save", arguments->save, "Write the tagged paths to this file");
  auto* load = command->add_option("--load", arguments->load, "Tag just what this file lists");
  command->add_option("--merge", arguments->merge, "Also tag what this file lists")->excludes(load);
  command->add_flag("--ignore-ext", arguments->ignoreExtension, "Let a listed file tag all files of its stem");
  command->add_flag("--overwrite", arguments->overwrite, "Let --save replace a file");
  command->add_flag("--dry-run", arguments->dryRun, "Write nothing");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunTags(*arguments, state); }; });
}

}  // namespace ml::cli
