#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "catalogue/transfer_files.h"
#include "cli/commands.h"
#include "cli/edit_run.h"
#include "cli/transfer_answers.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

/// copy and move: images to another directory, with their companions.
namespace ml::cli {
namespace {

using catalogue::FileTransfer;
using catalogue::TransferKind;

struct TransferArguments {
  std::vector<std::string> files;
  std::string to;
  ExistingFileOptions existing;
  bool yes = false;
};

/// Throws UserError.
std::string Destination(const TransferArguments& arguments, TransferAnswers& answers) {
  auto directory = platform::normaliseDirectory(arguments.to);
  const bool missing = !platform::IsNameTaken(directory);
  if (missing && !arguments.yes) {
    throw platform::UserError(arguments.to + ": does not exist, nothing done; choose --yes to make it");
  }
  if (missing && arguments.existing.dryRun) return directory;
  // With the "/", a blank at the end of a name is no slip of the hand.
  const auto made = catalogue::TransferDirectory(directory + "/", "", answers);
  if (!made) throw platform::UserError(arguments.to + ": cannot be used");
  return *made;
}

class TransferRun {
 public:
  TransferRun(TransferKind kind, const TransferArguments& arguments, RunState& state)
      : kind_(kind),
        arguments_(arguments),
        state_(state),
        answers_(arguments.existing, arguments.yes),
        directory_(Destination(arguments, answers_)) {}

  EditOutcome Transfer(const GivenImage& image, ImageSession& session) {
    auto& companions = session.Tools().companions;
    if (!transfer_) {
      transfer_.emplace(kind_, directory_,
                        catalogue::TransferTools{.companions = companions,
                                                 .trash = session.Bin(),
                                                 .ask = answers_,
                                                 .stop = state_.stop,
                                                 .batch = &session.Batch()});
    }
    answers_.Begin(companions.Find(image.path));
    auto files = session.DryRun() ? transfer_->Preview(image.path) : transfer_->Transfer(image.path);
    if (!answers_.Made(files)) files.clear();
    EditOutcome outcome{.changed = !files.empty(), .note = answers_.Note()};
    for (const auto& file : files) {
      outcome.files.push_back(platform::JoinPath(arguments_.to, platform::FileName(file)));
    }
    return outcome;
  }

 private:
  const TransferKind kind_;
  const TransferArguments& arguments_;
  RunState& state_;
  TransferAnswers answers_;
  const std::string directory_;
  std::optional<FileTransfer> transfer_;  ///< made when there is a journal for it
};

void RunTransfer(TransferKind kind, const TransferArguments& arguments, RunState& state) {
  const bool move = kind == TransferKind::Move;
  if (arguments.to.empty()) throw WrongUsage("--to needs a directory");
  TransferRun run(kind, arguments, state);
  RunEdits(arguments.files,
           {.what = move ? catalogue::kMoveJob : catalogue::kCopyJob,
            .done = move ? "moved" : "copied",
            .dryRun = arguments.existing.dryRun,
            .files = ResultFiles::Told,
            .edit = [&](const GivenImage& image, ImageSession& session) { return run.Transfer(image, session); }},
           state);
}

void AddTransferCommand(CLI::App& command, TransferKind kind, RunState& state) {
  auto arguments = std::make_shared<TransferArguments>();
  command.add_option("files", arguments->files, "Images")->required();
  command.add_option("--to", arguments->to, "The directory that they go to")->required();
  command.add_flag("--yes", arguments->yes, "Make the directory if it is missing");
  AddExistingFileOptions(command, arguments->existing);
  command.callback([arguments, kind, &state] {
    state.action = [arguments, kind, &state] { RunTransfer(kind, *arguments, state); };
  });
}

}  // namespace

void AddCopyCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("copy", "Copy images to another directory, with what goes with them");
  AddTransferCommand(*command, TransferKind::Copy, state);
}

void AddMoveCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("move", "Move images to another directory, with what goes with them");
  AddTransferCommand(*command, TransferKind::Move, state);
}

}  // namespace ml::cli
