#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "imagefiles/edits/jpeg_turn.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

using imaging::Turn;

struct RotateArguments {
  std::vector<std::string> files;
  bool left = false, right = false, half = false, upright = false, yes = false, dryRun = false;

  Turn Direction() const { return left ? Turn::cw270 : (right ? Turn::cw90 : Turn::half); }
};

/// A TIFF that is no raw file is written anew, which the user has to want.
void RequireConsent(imagefiles::ImageFile& file, const GivenImage& image, bool yes, const RunState& state) {
  if (yes || state.settings.shootingData.tiffRotateWarning == 0) return;
  if (!platform::EndsWithNoCase(image.path, ".tif")) return;
  if (file.Exif().isEos1DRaw || file.Exif().tiffThumbnailOnly) return;
  throw platform::UserError(image.given +
                            ": would be rewritten as an uncompressed TIFF and could lose information other than EXIF "
                            "and IPTC data, not turned; choose --yes");
}

EditOutcome RotateOne(const GivenImage& image, const RotateArguments& arguments, ImageSession& session,
                      const RunState& state) {
  const auto file = OpenImage(image.path, session.Tools());
  if (arguments.upright) {
    imagefiles::AutoRotate(*file, session.Tools());
  } else {
    RequireConsent(*file, image, arguments.yes, state);
    imagefiles::Rotate(*file, arguments.Direction(), session.Tools());
  }
  const bool changed = session.Changed();
  return {.changed = changed, .note = changed ? "" : "no JPEG whose orientation asks for a turn"};
}

void RunRotate(const RotateArguments& arguments, RunState& state) {
  RunEdits(arguments.files,
           {.what = arguments.upright ? catalogue::kAutoRotateJob : catalogue::kRotateJob,
            .done = "turned",
            .dryRun = arguments.dryRun,
            .edit = [&](const GivenImage& image,
                        ImageSession& session) { return RotateOne(image, arguments, session, state); }},
           state);
}

}  // namespace

void AddRotateCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("rotate", "Turn images, without loss where their format allows it");
  auto arguments = std::make_shared<RotateArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  auto* turns = command->add_option_group("Turn", "One of these");
  turns->add_flag("--left", arguments->left, "A quarter counter-clockwise");
  turns->add_flag("--right", arguments->right, "A quarter clockwise");
  turns->add_flag("--180", arguments->half, "Upside down");
  turns->add_flag("--auto", arguments->upright, "JPEG images upright, as their orientation tells");
  turns->require_option(1);
  command->add_flag("--yes", arguments->yes, "Also TIFF files, which are rewritten uncompressed");
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be turned");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunRotate(*arguments, state); }; });
}

}  // namespace ml::cli
