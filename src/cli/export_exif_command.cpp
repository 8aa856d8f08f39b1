#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/output_file.h"
#include "cli/tool_run.h"
#include "imagefiles/tools/export_exif.h"
#include "imagefiles/tools/messages.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

struct ExportExifArguments {
  std::vector<std::string> files;
  std::string out, format, delimiter;
  bool header = false, perFile = false;
  ExistingFileOptions existing;
};

/// What no option tells is as the settings have it.
imagefiles::ExportSettings SettingsOf(const ExportExifArguments& arguments, const RunState& state) {
  const auto& settings = state.settings.shootingData;
  const auto stored = settings.exportCustomFormat != 0 ? settings.exportFormatString : "";
  const std::string storedDelimiter(1, static_cast<char>(settings.exportDelimiter));
  const auto delimiter =
      imagefiles::ParseDelimiter(arguments.delimiter.empty() ? storedDelimiter : arguments.delimiter);
  if (!delimiter) throw WrongUsage(std::string(imagefiles::tool_messages::kBadDelimiter));
  if (arguments.perFile != arguments.out.empty()) {
    throw WrongUsage("name either a file by --out, or --per-file");
  }
  return {.mode = arguments.perFile ? imagefiles::ExportMode::TextPerImage : imagefiles::ExportMode::LinePerImage,
          .format = arguments.format.empty() ? stored : arguments.format,
          .delimiter = *delimiter,
          .header = arguments.header || settings.exportHeadings != 0,
          .output = platform::AbsolutePath(arguments.out)};
}

void RunExportExif(const ExportExifArguments& arguments, RunState& state) {
  const auto settings = SettingsOf(arguments, state);
  if (!arguments.perFile && !MayWrite(arguments.out, arguments.existing.overwrite, state)) return;
  ToolAnswers answers;
  answers.overwrite = arguments.existing.overwrite;
  const auto locale = platform::LocaleText::FromEnvironment();
  const auto run = [&](const std::vector<std::string>& images, const imagefiles::EditTools& tools,
                       const imagefiles::ToolRun& how) {
    return imagefiles::ExportExif(images, settings, locale, tools, how);
  };
  RunTool(arguments.files,
          {.what = std::string(imagefiles::tool_messages::kExportTitle),
           .done = "exported to",
           .dryRun = arguments.existing.dryRun,
           .place = arguments.out,
           .keepingIsFine = arguments.existing.skip,
           .run = run},
          answers, state);
}

}  // namespace

void AddExportExifCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("export-exif", "Write the shooting data of images to a text file");
  auto arguments = std::make_shared<ExportExifArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  command->add_option("--out", arguments->out, "The file, with a line for each image");
  command->add_flag("--per-file", arguments->perFile, "Write all data of each image to a .txt file beside it");
  command->add_option("--format", arguments->format, "The fields of a line, as tokens with | between them");
  command->add_option("--delimiter", arguments->delimiter, "What stands between the fields: , ; | or ^t for a tab");
  command->add_flag("--header", arguments->header, "Begin with a line that names the fields");
  AddOverwriteOrSkip(*command, arguments->existing);
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunExportExif(*arguments, state); }; });
}

}  // namespace ml::cli
