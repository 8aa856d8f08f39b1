#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/tool_run.h"
#include "imagefiles/tools/copy_exif.h"
#include "imagefiles/tools/messages.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

struct CopyExifArguments {
  std::vector<std::string> files;
  std::string to;
  bool jpegsOnly = false, yes = false, dryRun = false;
};

void RunCopyExif(const CopyExifArguments& arguments, RunState& state) {
  if (arguments.to.empty()) throw WrongUsage("--to needs a directory");
  ToolAnswers answers;
  answers.yes = arguments.yes;
  const auto run = [&](const std::vector<std::string>& images, const imagefiles::EditTools& tools,
                       const imagefiles::ToolRun& how) {
    return imagefiles::CopyExifBatch(
        {.sources = images,
         .directory = platform::normaliseDirectory(arguments.to),
         .targets = arguments.jpegsOnly ? imagefiles::CopyTargets::JpegsOnly : imagefiles::CopyTargets::JpegsAndTiffs},
        tools, how);
  };
  RunTool(arguments.files,
          {.what = std::string(imagefiles::tool_messages::kCopyExifTitle),
           .done = "copied to",
           .dryRun = arguments.dryRun,
           .place = arguments.to,
           .run = run},
          answers, state);
}

}  // namespace

void AddCopyExifCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("copy-exif", "Copy shooting data to the pictures made of images");
  auto arguments = std::make_shared<CopyExifArguments>();
  command->add_option("files", arguments->files, "Images that have the data")->required();
  command->add_option("--to", arguments->to, "The directory with the pictures of the same names")->required();
  command->add_flag("--jpegs-only", arguments->jpegsOnly, "Leave TIFF files as they are");
  command->add_flag("--yes", arguments->yes, "Write to read-only files too");
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be changed");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunCopyExif(*arguments, state); }; });
}

}  // namespace ml::cli
