#include "rawconvert/batch/output_chooser.h"

#include <sys/stat.h>

#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

/// Adds the time until its end to a sum.
class WaitingTime {
 public:
  WaitingTime(const platform::Clock& clock, std::time_t& sum) : clock_(clock), sum_(sum), start_(clock.now()) {}
  ~WaitingTime() { sum_ += clock_.now() - start_; }
  WaitingTime(const WaitingTime&) = delete;
  WaitingTime& operator=(const WaitingTime&) = delete;

 private:
  const platform::Clock& clock_;
  std::time_t& sum_;
  std::time_t start_;
};

/// Device and inode; nothing if there is no such file.
std::optional<std::pair<std::uint64_t, std::uint64_t>> PlaceOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return std::pair<std::uint64_t, std::uint64_t>(status.st_dev, status.st_ino);
}

}  // namespace

bool OutputChooser::IsSource(const std::string& path) {
  const auto place = PlaceOf(path);
  if (!place) return false;
  if (known_.empty()) {
    for (const auto& one : sources_) {
      if (const auto source = PlaceOf(one)) known_.insert(*source);
    }
  }
  return known_.contains(*place);
}

bool OutputChooser::IsAnySource(const OutputPlan& plan, const std::string& path) {
  return platform::SameFile(path, plan.source) || IsSource(path);
}

std::optional<std::string> OutputChooser::AskSaveAs(const OutputPlan& plan, const char* refusal) {
  const auto extension = platform::FileName(plan.destination);
  auto name = host_.ask.saveAs({.title = messages::kSaveAs,
                                .filter = std::string(plan.fileFilter),
                                .defaultExtension = std::string(extension.substr(extension.rfind('.') + 1)),
                                .start = plan.destination});
  if (!name || !IsAnySource(plan, *name)) return name;
  host_.ask.message({.text = refusal, .caption = messages::kTitle, .icon = platform::BoxIcon::Warning});
  return std::nullopt;
}

std::optional<std::string> OutputChooser::ChooseApartFromSource(const OutputPlan& plan) {
  const WaitingTime waiting(host_.clock, waited_);
  const platform::MessageBox question{.text = messages::kSameFile + plan.source + messages::kSameFileChoice,
                                      .caption = messages::kTitle,
                                      .icon = platform::BoxIcon::Question,
                                      .buttons = platform::Buttons::YesNo};
  if (host_.ask.ask(question) != platform::Button::Yes) return std::nullopt;
  return AskSaveAs(plan, messages::kStillSame);
}

std::optional<std::string> OutputChooser::AskExisting(const OutputPlan& plan) {
  using platform::FileExistsAnswer;
  const WaitingTime waiting(host_.clock, waited_);
  switch (host_.ask.fileExists(plan.destination)) {
    case FileExistsAnswer::OverwriteAll:
      standing_ = Standing::OverwriteAll;
      return plan.destination;
    case FileExistsAnswer::Overwrite:
      return plan.destination;
    case FileExistsAnswer::SkipAll:
      standing_ = Standing::SkipAll;
      return std::nullopt;
    case FileExistsAnswer::Skip:
      return std::nullopt;
    case FileExistsAnswer::SaveAs:
      return AskSaveAs(plan, messages::kSavedAsSource);
    case FileExistsAnswer::Cancel:
      break;
  }
  throw platform::Cancelled();
}

std::optional<std::string> OutputChooser::Decide(const OutputPlan& plan) {
  if (IsAnySource(plan, plan.destination)) return ChooseApartFromSource(plan);
  if (!platform::Exists(plan.destination)) return plan.destination;
  if (standing_ == Standing::SkipAll) return std::nullopt;
  const bool ours = chosen_.contains(plan.destination);
  return standing_ == Standing::OverwriteAll && !ours ? plan.destination : AskExisting(plan);
}

std::optional<std::string> OutputChooser::Choose(const OutputPlan& plan) {
  auto name = Decide(plan);
  if (name) chosen_.insert(*name);
  return name;
}

}  // namespace ml::rawconvert
