#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/output_file.h"
#include "cli/tool_run.h"
#include "imagefiles/tools/extract_jpegs.h"
#include "imagefiles/tools/messages.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::cli {
namespace {

struct ExtractJpegArguments {
  std::vector<std::string> files;
  std::string out;
  bool viewingJpegs = false, yes = false;
  ExistingFileOptions existing;
};

imagefiles::ExtractSettings SettingsOf(const ExtractJpegArguments& arguments, const RunState& state) {
  const auto& settings = state.settings.shootingData;
  return {.directory = platform::normaliseDirectory(arguments.out),
          .exif = settings.extractJpegExif != 0,
          .rotate = settings.extractJpegRotate != 0,
          .timestamp = settings.extractJpegTimestamp != 0,
          .viewingJpegs = arguments.viewingJpegs || settings.extractJpegCopyViewingJpegs != 0,
          .overwrite = arguments.existing.overwrite};
}

/// Throws UserError.
void RequireDirectory(const ExtractJpegArguments& arguments, const std::string& directory, ToolAnswers& answers) {
  if (arguments.existing.dryRun && arguments.yes && !platform::IsNameTaken(directory)) return;
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
          {.what = std::string(imagefiles::tool_messages::kExtractTitle),
           .done = "extracted to",
           .dryRun = arguments.existing.dryRun,
           .place = arguments.out,
           .keepingIsFine = arguments.existing.skip,
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
  AddOverwriteOrSkip(*command, arguments->existing);
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunExtractJpeg(*arguments, state); }; });
}

}  // namespace ml::cli
