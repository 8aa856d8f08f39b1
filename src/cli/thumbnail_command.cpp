#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "imagefiles/edits/jpeg_thumbnail.h"
#include "platform/errors.h"

namespace ml::cli {
namespace {

struct ThumbnailArguments {
  std::vector<std::string> files;
  bool regenerate = false, dryRun = false;
};

EditOutcome RegenerateOne(const GivenImage& image, ImageSession& session) {
  const auto file = OpenImage(image.path, session.Tools());
  if (file->Row().format != imagefiles::Format::Jpeg) throw platform::UserError(image.given + ": is no JPEG");
  if (!imagefiles::RegenerateThumbnail(*file, session.Tools())) {
    throw platform::UserError(image.given + ": has no room for a new thumbnail, the old one stays");
  }
  return {.changed = session.Changed()};
}

void RunThumbnail(const ThumbnailArguments& arguments, RunState& state) {
  RunEdits(arguments.files,
           {.what = catalogue::kThumbnailJob,
            .done = "given a new thumbnail",
            .dryRun = arguments.dryRun,
            .companions = GivenCompanions::AreEditedThemselves,
            .edit = RegenerateOne},
           state);
}

}  // namespace

void AddThumbnailCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("thumbnail", "Make the thumbnails in JPEG images anew from their pictures");
  auto arguments = std::make_shared<ThumbnailArguments>();
  command->add_option("files", arguments->files, "JPEG images")->required();
  command->add_flag("--regenerate", arguments->regenerate, "To be given, as the old thumbnails are lost")->required();
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be changed");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunThumbnail(*arguments, state); }; });
}

}  // namespace ml::cli
