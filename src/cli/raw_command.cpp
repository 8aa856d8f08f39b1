#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/output.h"
#include "cli/output_file.h"
#include "cli/progress_line.h"
#include "cli/run_state.h"
#include "platform/data_folders.h"
#include "platform/paths.h"
#include "rawconvert/nef/nef_sensor.h"
#include "rawconvert/nef/sensor_pgm.h"

/// raw: what the sensors of NEF files recorded, as grey pictures.
namespace ml::cli {
namespace {

struct Arguments {
  std::vector<std::string> files;
  std::string directory;
  ExistingFileOptions existing;
};

/// What became of one file.
struct Outcome {
  std::optional<std::string> output;  ///< where the samples went, or would go
  bool ok = true;
  std::string message;  ///< why there is no output
};

class RawRun {
 public:
  RawRun(const Arguments& arguments, RunState& state)
      : arguments_(arguments), state_(state), outputs_(arguments.directory, arguments.existing) {}

  void Run() {
    try {
      RunAll();
    } catch (...) {
      outputs_.Settle();
      throw;
    }
    outputs_.Settle();
    if (state_.json) PrintJson(result_);
  }

 private:
  void RunAll() {
    ProgressLine progress(static_cast<int>(arguments_.files.size()));
    for (const auto& given : arguments_.files) {
      progress.Next(given);
      const auto outcome = One(given);
      progress.Clear();
      Tell(given, outcome);
    }
  }

  Outcome One(const std::string& given) {
    OutputFile output;
    Outcome outcome;
    try {
      const auto path = platform::AbsolutePath(given);
      output = outputs_.Choose(std::string(platform::FileName(path)) + ".pgm", path);
      outcome = Write(path, output);
    } catch (const platform::UserError& error) {
      outcome = {std::nullopt, false, error.what()};
    }
    outputs_.Close(output);
    return outcome;
  }

  Outcome Write(const std::string& path, const OutputFile& output) {
    if (output.result == WriteResult::Skipped) return {std::nullopt, true, output.note};
    if (output.result == WriteResult::Refused) return {std::nullopt, false, output.note};
    const auto sensor = rawconvert::ReadNefSensor(path, {.progress = nullptr, .stop = state_.stop});
    outputs_.Write(output, rawconvert::EncodePgm(sensor));
    return {output.path, true, ""};
  }

  void Tell(const std::string& given, const Outcome& outcome) {
    if (!outcome.ok) {
      state_.Fail(outcome.message);
    } else if (!outcome.output) {
      Complain(outcome.message);
    } else if (!state_.json) {
      PrintLine(given + (arguments_.existing.dryRun ? " (not written) -> " : " -> ") + *outcome.output);
    }
    Json object;
    PutPath(object, "path", given);
    object["output"] = nullptr;
    if (outcome.output) PutPath(object, "output", *outcome.output);
    object["ok"] = outcome.ok;
    object["message"] = JsonText(outcome.message);
    result_.push_back(std::move(object));
  }

  const Arguments& arguments_;
  RunState& state_;
  OutputFiles outputs_;
  Json result_ = Json::array();
};

}  // namespace

void AddRawCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("raw", "Write the sensor samples of NEF files as 16-bit PGM files");
  auto arguments = std::make_shared<Arguments>();
  command->add_option("files", arguments->files, "NEF files")->required();
  command->add_option("--out", arguments->directory, "Directory for the samples")->required();
  AddExistingFileOptions(*command, arguments->existing);
  command->callback([arguments, &state] {
    state.action = [arguments, &state] {
      if (!arguments->existing.dryRun) platform::ensureDirectory(arguments->directory);
      RawRun(*arguments, state).Run();
    };
  });
}

}  // namespace ml::cli
