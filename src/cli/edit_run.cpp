#include "cli/edit_run.h"

#include <atomic>
#include <exception>
#include <nlohmann/json.hpp>
#include <optional>
#include <unordered_map>

#include "cli/output.h"
#include "cli/progress_line.h"
#include "imagefiles/format_table.h"
#include "platform/errors.h"
#include "platform/ordered_jobs.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

/// One file of the command line.
struct Target {
  GivenImage image;
  std::size_t leader = 0;  ///< the target that stands for it: itself, or the image that takes it along
  bool reached = false;
  std::optional<std::string> failure = std::nullopt;
  EditOutcome outcome = {};
};

class EditRun {
 public:
  EditRun(const std::vector<std::string>& files, const EditCommand& command, RunState& state)
      : command_(command),
        state_(state),
        session_(command.what, state, command.dryRun ? imagefiles::WriteMode::DryRun : imagefiles::WriteMode::Write),
        progress_(static_cast<int>(files.size())) {
    for (const auto& given : files) targets_.push_back({.image = {given, platform::AbsolutePath(given)}});
    FindLeaders();
  }

  void Run() {
    platform::RunOrdered({.count = static_cast<int>(targets_.size()),
                          .threads = command_.threads,
                          .begin = [](int) {},
                          .work = [this](int index) { Edit(static_cast<std::size_t>(index)); },
                          .finish = [this](int index) { Tell(static_cast<std::size_t>(index)); }},
                         state_.stop);
    progress_.Clear();
    session_.Finish();
    if (state_.json) PrintJson(Results());
    if (cancelled_ || state_.stop.stop_requested()) throw platform::Cancelled();
  }

 private:
  void FindLeaders() {
    std::unordered_map<std::string, std::size_t> leaders;
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      const auto& path = targets_[i].image.path;
      const bool takesAlong =
          command_.companions == GivenCompanions::GoWithImage && imagefiles::FindFormat(path) != nullptr;
      if (!takesAlong) continue;
      for (const auto& file : session_.Tools().companions.Find(path).Paths()) {
        if (file != path) leaders.emplace(file, i);
      }
    }
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      targets_[i].leader = leaders.emplace(targets_[i].image.path, i).first->second;
    }
    // What goes with a viewing JPEG goes with its raw file.
    for (auto& target : targets_) target.leader = targets_[target.leader].leader;
  }

  void Edit(std::size_t index) {
    auto& target = targets_[index];
    if (target.leader != index || cancelled_) return;
    try {
      RequireImage(target.image);
      ImageSession session(session_);
      target.outcome = command_.edit(target.image, session);
    } catch (const platform::Cancelled&) {
      cancelled_ = true;
      return;
    } catch (const std::exception& error) {  // also of a library, or of memory: it is the file's own
      target.failure = error.what();
    }
    target.reached = true;
  }

  void Tell(std::size_t index) {
    const auto& target = targets_[index];
    progress_.Next(target.image.given);
    if (!target.reached) return;
    if (target.failure || !state_.json) progress_.Clear();
    if (target.failure) return state_.Fail(WithName(target));
    if (!state_.json) PrintLine(target.image.given + ": " + Line(target.outcome));
  }

  static std::string WithName(const Target& target) {
    const auto& [given, path] = target.image;
    const bool named =
        target.failure->find(given) != std::string::npos || target.failure->find(path) != std::string::npos;
    return named ? *target.failure : given + ": " + *target.failure;
  }

  std::string Line(const EditOutcome& outcome) const {
    auto line = outcome.changed ? (command_.dryRun ? "would be " : "") + command_.done : std::string("unchanged");
    return outcome.note.empty() ? line : line + ", " + outcome.note;
  }

  Json Results() const {
    auto results = Json::array();
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      const auto& leader = targets_[targets_[i].leader];
      if (leader.reached) results.push_back(ObjectOf(targets_[i], leader, targets_[i].leader == i));
    }
    return results;
  }

  Json ObjectOf(const Target& target, const Target& leader, bool leads) const {
    Json object;
    PutPath(object, "path", target.image.given);
    if (command_.files == ResultFiles::Told) {
      object["files"] = Json::array();
      for (const auto& file : leader.outcome.files) {
        if (leads) object["files"].push_back(JsonText(file));
      }
    }
    object["ok"] = !leader.failure.has_value();
    const auto note = leads ? leader.outcome.note : "goes with " + leader.image.given;
    object["message"] = JsonText(leader.failure.value_or(note));
    return object;
  }

  const EditCommand& command_;
  RunState& state_;
  EditSession session_;
  ProgressLine progress_;
  std::vector<Target> targets_;
  std::atomic<bool> cancelled_ = false;
};

}  // namespace

void RunEdits(const std::vector<std::string>& files, const EditCommand& command, RunState& state) {
  EditRun(files, command, state).Run();
}

}  // namespace ml::cli
