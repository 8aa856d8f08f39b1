#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "imagefiles/edits/adjust_dates.h"
#include "platform/readable_file.h"

namespace ml::cli {
namespace {

constexpr int kThreads = 8;                           // each mostly waits for the disk
constexpr std::int64_t kMostSeconds = 4'000'000'000;  // over a century

struct AdjustTimeArguments {
  std::vector<std::string> files;
  std::int64_t seconds = 0;
  bool fileTimes = false, dryRun = false;
};

EditOutcome AdjustOne(const GivenImage& image, const AdjustTimeArguments& arguments, bool fileTimes,
                      ImageSession& session) {
  { const platform::ReadableFile readable(image.path); }
  imagefiles::AdjustDates(image.path, arguments.seconds, fileTimes, session.Tools());
  const bool changed = session.Changed();
  return {.changed = changed, .note = changed ? "" : "records no date that can be shifted"};
}

void RunAdjustTime(const AdjustTimeArguments& arguments, RunState& state) {
  const bool fileTimes = arguments.fileTimes || state.settings.shootingData.adjustTimeTimestamp != 0;
  RunEdits(arguments.files,
           {.what = catalogue::kAdjustDateJob,
            .done = "shifted",
            .dryRun = arguments.dryRun,
            .threads = kThreads,
            .edit = [&](const GivenImage& image,
                        ImageSession& session) { return AdjustOne(image, arguments, fileTimes, session); }},
           state);
}

}  // namespace

void AddAdjustTimeCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("adjust-time", "Shift the dates recorded in images");
  auto arguments = std::make_shared<AdjustTimeArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  command->add_option("--seconds", arguments->seconds, "By how much; may be negative")
      ->required()
      ->check(CLI::Range(-kMostSeconds, kMostSeconds));
  command->add_flag("--file-times", arguments->fileTimes, "Also the time of the last change of the files");
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be shifted");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunAdjustTime(*arguments, state); }; });
}

}  // namespace ml::cli
