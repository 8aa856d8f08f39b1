#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/tool_run.h"
#include "imagefiles/tools/extract_jpegs.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::cli {
namespace {

struct ExtractJpegArguments {
  std::vector<std::string> files;
  std::string out;
  bool viewingJpegs = false, overwrite = false, skip = false, yes = false, dryRun = false;
};

imagefiles::ExtractSettings SettingsOf(const ExtractJpegArguments& arguments, const RunState& state) {
  const auto& settings = state.settings.shootingData;
  return {.directory = platform::normaliseDirectory(arguments.out),
          .exif = settings.extractJpegExif != 0,
          .rotate = settings.extractJpegRotate != 0,
          .timestamp = settings.extractJpegTimestamp != 0,
          .viewingJpegs = arguments.viewingJpegs || settings.extractJpegCopyViewingJpegs != 0,
          .overwrite = arguments.overwrite};
}

/// Throws UserError.
void RequireDirectory(const ExtractJpegArguments& arguments, const std::string& directory, ToolAnswers& answers) {
  if (arguments.dryRun && arguments.yes && !platform::IsNameTaken(directory)) return;
  if (!imagefiles::EnsureExtractDirectory(directory, answers)) {
    throw platform::UserError(arguments.out + ": does not exist, nothing done; choose --yes to make it");
  }
}

void RunExtractJpeg(const ExtractJpegArguments& arguments, RunState& state) {
  if (arguments.out.empty()) throw WrongUsage("--out needs a directory");
  const auto settings = SettingsOf(arguments, state);
  ToolAnswers answers;
  answers.yes = arguments.yes;
  RequireDirectory(arguments, settings.directory, answers);
  const auto run = [&](const std::vector<std::string>& images, const imagefiles::EditTools& tools,
                       const imagefiles::ToolRun& how) {
    return imagefiles::ExtractJpegs(images, settings, tools, how);
  };
  RunTool(arguments.files,
          {.what = "Extract Embedded JPEGs",
           .done = "extracted to",
           .dryRun = arguments.dryRun,
           .place = arguments.out,
           .keepingIsFine = arguments.skip,
           .run = run},
          answers, state);
}

}  // namespace

void AddExtractJpegCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("extract-jpeg", "Write the JPEGs that are in raw files to files of their own");
  auto arguments = std::make_shared<ExtractJpegArguments>();
  command->add_option("files", arguments->files, "Raw files")->required();
  command->add_option("--out", arguments->out, "The directory that they go to")->required();
  command->add_flag("--viewing-jpegs", arguments->viewingJpegs, "Copy those that stand beside EOS-1D raw files");
  command->add_flag("--yes", arguments->yes, "Make the directory if it is missing");
  auto* overwrite = command->add_flag("--overwrite", arguments->overwrite, "Replace files that exist");
  command->add_flag("--skip", arguments->skip, "Leave files that exist and go on")->excludes(overwrite);
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be written");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunExtractJpeg(*arguments, state); }; });
}

}  // namespace ml::cli
