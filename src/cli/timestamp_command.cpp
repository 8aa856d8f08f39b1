#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "catalogue/messages.h"
#include "catalogue/shooting_timestamps.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::cli {
namespace {

struct TimestampArguments {
  std::vector<std::string> files;
  bool readOnly = false, dryRun = false;
};

EditOutcome TimestampOne(const GivenImage& image, const TimestampArguments& arguments, ImageSession& session) {
  const auto& tools = session.Tools();
  { const platform::ReadableFile readable(image.path); }
  const auto failed = catalogue::SetTimestamps({image.path}, arguments.readOnly,
                                               {.options = tools.options,
                                                .companions = tools.companions,
                                                .batch = tools.edit.recorder,
                                                .insteadOfWriting = tools.edit.insteadOfWriting});
  if (!failed.empty()) throw platform::UserError(catalogue::UnableToSetTimestamp(image.path));
  const bool changed = session.Changed();
  return {.changed = changed, .note = changed ? "" : "has its time already, or records none"};
}

void RunTimestamp(const TimestampArguments& arguments, RunState& state) {
  RunEdits(
      arguments.files,
      {.what = catalogue::kTimestampJob,
       .done = "timestamped",
       .dryRun = arguments.dryRun,
       .edit = [&](const GivenImage& image, ImageSession& session) { return TimestampOne(image, arguments, session); }},
      state);
}

}  // namespace

void AddTimestampCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("timestamp", "Give images the time of their shot as the time of their files");
  auto arguments = std::make_shared<TimestampArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  command->add_flag("--read-only", arguments->readOnly, "Also take the permission to write them away");
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be changed");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunTimestamp(*arguments, state); }; });
}

}  // namespace ml::cli
