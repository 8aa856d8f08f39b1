#include <CLI/CLI.hpp>
#include <clocale>
#include <cstdlib>
#include <exception>
#include <string>

#include "cli/commands.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "cli/setting_option.h"
#include "platform/errors.h"
#include "platform/start_recovery.h"
#include "settings/settings_store.h"

namespace ml::cli {
namespace {

/// In the order of the help.
constexpr void (*kCommands[])(CLI::App& program, RunState& state) = {
    AddSettingsCommand,   AddListCommand,        AddOrderCommand,     AddTagsCommand,           AddInfoCommand,
    AddIptcCommand,       AddCommentCommand,     AddTextCommand,      AddExpandCommand,         AddThumbCommand,
    AddPreviewCommand,    AddHistogramCommand,   AddRawCommand,       AddRegenerateJpegCommand, AddRotateCommand,
    AddAdjustTimeCommand, AddTimestampCommand,   AddThumbnailCommand, AddEmbedProfileCommand,   AddCopyCommand,
    AddMoveCommand,       AddRenameCommand,      AddDeleteCommand,    AddConvertCommand,        AddCopyExifCommand,
    AddExportExifCommand, AddExtractJpegCommand, AddUndoCommand};

void AddCommonOptions(CLI::App& program, RunState& state) {
  program.add_flag("--json", state.json, "Print one JSON document");
  program.add_flag("--no-settings", state.noSettings, "Take the defaults instead of the stored settings");
  program.add_option("--setting", state.overrides, "KEY=VALUE for this run")->allow_extra_args(false);
}

void LoadSettings(RunState& state) {
  if (state.noSettings) {
    state.settings = settings::MakeDefaultSettings();
  } else {
    std::string warning;
    state.settings = settings::SettingsStore().Load(&warning);
    if (!warning.empty()) Complain(warning);
  }
  for (const auto& assignment : state.overrides) {
    AssignSetting(state.settings, assignment, settings::SettingUse::ThisRun);
  }
}

ExitCode Run(RunState& state) {
  for (const auto& sentence : platform::FinishEarlierRuns()) Complain(sentence);
  try {
    LoadSettings(state);
    state.action();
  } catch (const WrongUsage& error) {
    Complain(error.what());
    return ExitCode::WrongUsage;
  } catch (const platform::Cancelled&) {
    Complain("cancelled");
    return ExitCode::Cancelled;
  } catch (const std::exception& error) {
    Complain(error.what());
    return ExitCode::SomeFailed;
  }
  if (!AllPrinted()) state.Fail("standard output cannot be written");
  return state.failed ? ExitCode::SomeFailed : ExitCode::Ok;
}

int Main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");
  std::setlocale(LC_TIME, "");  // names of months and days, as the window has them
  RunState state;
  CLI::App program("Looks at and works on directories of camera images without a window.", "marrowlantern-cli");
  program.require_subcommand(1);
  program.fallthrough();
  program.set_version_flag("--version", "marrowlantern-cli " ML_VERSION);
  AddCommonOptions(program, state);
  for (const auto add : kCommands) add(program, state);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::WrongUsage);
  }
  const Interrupt interrupt;
  state.stop = interrupt.Token();
  return static_cast<int>(Run(state));
}

}  // namespace
}  // namespace ml::cli

int main(int argc, char** argv) { return ml::cli::Main(argc, argv); }
