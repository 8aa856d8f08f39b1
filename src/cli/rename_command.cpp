#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "batch/apply_rename.h"
#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_session.h"
#include "cli/given_image.h"
#include "cli/kept_marks.h"
#include "cli/output.h"
#include "cli/progress_line.h"
#include "imagefiles/format_table.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/progress.h"

/// rename: images get names made of their shooting data, with their companions, all of them or none.
namespace ml::cli {
namespace {

struct RenameArguments {
  std::vector<std::string> files;
  std::string sort = "number";
  batch::RenameStyle style{.format = {}};
  int digits = 4, caseMode = 0;
  bool dryRun = false;
};

const std::unordered_map<std::string, batch::RenameSort> kSorts{{"number", batch::RenameSort::Number},
                                                                {"name", batch::RenameSort::Name},
                                                                {"time", batch::RenameSort::Time},
                                                                {"given", batch::RenameSort::AsGiven}};

class ReadingProgress final : public platform::NoProgress {
 public:
  explicit ReadingProgress(ProgressLine& line) : line_(line) {}
  void secondText(const std::string&) override { line_.Next("read"); }

 private:
  ProgressLine& line_;
};

/// The images of one directory, which are numbered for themselves.
struct DirectoryRun {
  std::string directory;  ///< with "/" at its end
  std::vector<GivenImage> images;
  batch::NewNames names = {};
};

class RenameRun {
 public:
  RenameRun(const RenameArguments& arguments, RunState& state)
      : arguments_(arguments),
        state_(state),
        session_(catalogue::kBatchRenameJob, state),
        companions_(options::ImageFileOptionsOf(state.settings)) {}

  void Run() {
    TakeFiles();
    BuildNames();
    const bool refused = Refused();
    if (!refused && !arguments_.dryRun) Rename();
    session_.Finish();
    Tell(arguments_.dryRun || !refused);
  }

 private:
  /// What goes with an image is no image of its own here. Throws UserError: one wrong file keeps all others.
  void TakeFiles() {
    std::vector<GivenImage> given;
    std::unordered_set<std::string> taken, companions;
    for (const auto& file : arguments_.files) {
      const GivenImage image{file, platform::AbsolutePath(file)};
      if (!taken.insert(image.path).second) continue;
      given.push_back(image);
      if (imagefiles::FindFormat(image.path) == nullptr) continue;
      for (const auto& path : companions_.Find(image.path).Paths()) {
        if (path != image.path) companions.insert(path);
      }
    }
    std::unordered_map<std::string, std::size_t> indices;
    for (const auto& image : given) {
      if (companions.contains(image.path)) continue;
      RequireImage(image);
      const std::string directory(platform::DirectoryOf(image.path));
      const auto index = indices.emplace(directory, runs_.size()).first->second;
      if (index == runs_.size()) runs_.push_back({.directory = directory, .images = {}});
      runs_[index].images.push_back(image);
    }
  }

  void BuildNames() {
    ProgressLine line(static_cast<int>(arguments_.files.size()));
    ReadingProgress progress(line);
    for (auto& run : runs_) {
      std::vector<std::string> paths;
      paths.reserve(run.images.size());
      for (const auto& image : run.images) paths.push_back(image.path);
      const auto images =
          batch::ReadRenameImages(paths, options::ExifOptionsOf(state_.settings), progress, state_.stop);
      run.names = batch::BuildNewNames(images, arguments_.style, batch::OtherFiles(run.directory, images));
    }
  }

  /// Tells what keeps the images from being renamed, the first reason in each directory.
  bool Refused() {
    bool refused = false;
    for (const auto& run : runs_) {
      try {
        batch::CheckNewNames(run.directory, run.names, arguments_.style.caseMode, companions_);
      } catch (const platform::UserError& error) {
        state_.Fail(error.what());
        refused = true;
      }
    }
    return refused;
  }

  void Rename() {
    batch::RenamePaths all;
    for (const auto& run : runs_) {
      const auto paths = batch::PathsOf(run.directory, run.names);
      all.sources.insert(all.sources.end(), paths.sources.begin(), paths.sources.end());
      all.destinations.insert(all.destinations.end(), paths.destinations.begin(), paths.destinations.end());
    }
    ImageSession session(session_);
    const catalogue::RenameTools tools{
        .companions = companions_, .trash = session.Bin(), .batch = &session.Batch(), .stop = state_.stop};
    const auto arrived = catalogue::RenameFiles(all.sources, all.destinations, arguments_.style.caseMode, tools);
    catalogue::RenamedPaths renamed;
    for (std::size_t i = 0; i < arrived.size(); ++i) renamed.emplace(all.sources[i], arrived[i]);
    LetMarksFollow(renamed, state_);
    auto next = arrived.begin();
    for (auto& run : runs_) {  // as the disk has it, which may differ from the list in the letters of an extension
      std::vector<std::string> names;
      for (std::size_t i = 0; i < run.images.size(); ++i) names.emplace_back(platform::FileName(*next++));
      for (auto& row : run.names.rows) row.newName = names[row.given];
    }
  }

  void Tell(bool names) const {
    Json result{{"renames", Json::array()}, {"conflicts", Json::array()}};
    for (const auto& run : runs_) {
      for (const auto& row : run.names.rows) {
        const auto& given = run.images[row.given].given;
        const auto to = std::string(platform::DirectoryOf(given)) + row.newName;
        if (names && !state_.json) PrintLine(given + " --> " + to);
        if (names) {
          auto& object = result["renames"].emplace_back(Json::object());
          PutPath(object, "from", given);
          PutPath(object, "to", to);
        }
        if (row.conflict) result["conflicts"].push_back(JsonText(to));
        if (row.conflict && !state_.json) Complain("already there: " + to);
      }
    }
    if (state_.json) PrintJson(result);
  }

  const RenameArguments& arguments_;
  RunState& state_;
  EditSession session_;
  imagefiles::CompanionFinder companions_;
  std::vector<DirectoryRun> runs_;
};

void RunRename(RenameArguments& arguments, RunState& state) {
  arguments.style.sort = kSorts.at(arguments.sort);
  arguments.style.digits = static_cast<std::size_t>(arguments.digits);
  arguments.style.caseMode = static_cast<catalogue::CaseMode>(arguments.caseMode);
  RenameRun(arguments, state).Run();
}

}  // namespace

void AddRenameCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("rename", "Name images by their shooting data, with what goes with them");
  auto arguments = std::make_shared<RenameArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  command->add_option("--style", arguments->style.format, "The new name, with tokens such as %d and %n")->required();
  command->add_option("--sort", arguments->sort, "Who gets which number: number, name, time or given")
      ->check(CLI::IsMember({"number", "name", "time", "given"}));
  command->add_option("--digits", arguments->digits, "Least digits of %n and %u")
      ->check(CLI::Range(1, static_cast<int>(batch::kMostDigits)));
  command->add_option("--first", arguments->style.firstNumber, "The first number")
      ->check(CLI::Range(std::int64_t{0}, batch::kLastNumber));
  command->add_option("--case", arguments->caseMode, "0 as it is, 1 lower extension, 2 lower name, 3 upper name")
      ->check(CLI::Range(0, 3));
  command->add_flag("--dry-run", arguments->dryRun, "Only tell the new names");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunRename(*arguments, state); }; });
}

}  // namespace ml::cli
