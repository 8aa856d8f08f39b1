#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "imagefiles/edits/developed_jpegs.h"
#include "platform/errors.h"
#include "rawconvert/raw_developer.h"

namespace ml::cli {
namespace {

struct RegenerateArguments {
  std::vector<std::string> files;
  std::optional<int> width, quality;
  bool dryRun = false;
};

void RunRegenerate(const RegenerateArguments& arguments, RunState& state) {
  const auto& remembered = state.settings.shootingData;
  const imagefiles::EmbeddedJpegSettings settings{arguments.width.value_or(remembered.regenEmbeddedJpegWidth),
                                                  arguments.quality.value_or(remembered.regenEmbeddedJpegQuality)};
  const auto developer = rawconvert::MakeRawDeveloper();
  const auto regenerate = [&](const GivenImage& image, ImageSession& session) {
    const auto file = OpenImage(image.path, session.Tools());
    if (file->Row().format != imagefiles::Format::Crw) throw platform::UserError(image.given + ": is no CRW file");
    imagefiles::RegenerateEmbeddedJpeg(*file, settings, developer.get(), session.Tools());
    return EditOutcome{.changed = session.Changed()};
  };
  RunEdits(arguments.files,
           {.what = catalogue::kRegenerateJob,
            .done = "given a new embedded JPEG",
            .dryRun = arguments.dryRun,
            .edit = regenerate},
           state);
}

}  // namespace

void AddRegenerateJpegCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("regenerate-jpeg", "Make the JPEGs in CRW files anew from their raw data");
  auto arguments = std::make_shared<RegenerateArguments>();
  command->add_option("files", arguments->files, "CRW files")->required();
  command->add_option("--width", arguments->width, "Largest width in pixels")->check(CLI::Range(160, 10'000));
  command->add_option("--quality", arguments->quality, "Of the JPEGs")->check(CLI::Range(0, 100));
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be changed");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunRegenerate(*arguments, state); }; });
}

}  // namespace ml::cli
