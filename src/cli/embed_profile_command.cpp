#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "imagefiles/edits/icc_edits.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

struct EmbedProfileArguments {
  std::vector<std::string> files;
  std::string profile;
  bool dryRun = false;
};

EditOutcome EmbedOne(const GivenImage& image, const std::string& profile, ImageSession& session) {
  const auto file = OpenImage(image.path, session.Tools());
  if (!imagefiles::EmbedIccProfile(*file, profile, session.Tools())) {
    throw platform::UserError(image.given + ": has no place for a color profile");
  }
  return {.changed = session.Changed()};
}

void RunEmbedProfile(const EmbedProfileArguments& arguments, RunState& state) {
  const auto profile = platform::AbsolutePath(arguments.profile);
  RunEdits(arguments.files,
           {.what = catalogue::kEmbedJob,
            .done = "given the profile",
            .dryRun = arguments.dryRun,
            .companions = GivenCompanions::AreEditedThemselves,
            .edit = [&](const GivenImage& image, ImageSession& session) { return EmbedOne(image, profile, session); }},
           state);
}

}  // namespace

void AddEmbedProfileCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("embed-profile", "Put a color profile into JPEG images");
  auto arguments = std::make_shared<EmbedProfileArguments>();
  command->add_option("files", arguments->files, "JPEG images")->required();
  command->add_option("--profile", arguments->profile, "The profile, an .icc or .icm file")->required();
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be changed");
  command->callback(
      [arguments, &state] { state.action = [arguments, &state] { RunEmbedProfile(*arguments, state); }; });
}

}  // namespace ml::cli
