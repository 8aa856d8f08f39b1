#include "cli/iptc_writing.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <set>

#include "catalogue/job_names.h"
#include "cli/edit_session.h"
#include "cli/job_progress.h"
#include "cli/run_state.h"
#include "imagefiles/messages.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_file.h"
#include "metadata/iptc/iptc_limits.h"
#include "metadata/iptc/iptc_validation.h"
#include "platform/locked_recorder.h"
#include "platform/ordered_jobs.h"
#include "platform/paths.h"

namespace ml::cli {
namespace {

using imagefiles::IptcResult;
using metadata::IptcItem;
using Items = std::vector<IptcItem>;

constexpr char kNotReached[] = "not changed, because an earlier file failed";

/// By number or by name.
int DatasetOf(std::string_view text) {
  const auto known = metadata::KnownIptcDatasets();
  const auto row = std::ranges::find_if(known, [&](const auto& candidate) {
    return candidate.name == text || std::to_string(candidate.dataset) == text;
  });
  if (row == known.end()) throw WrongUsage(std::string(text) + ": is no dataset that can be set");
  return row->dataset;
}

void RequireValid(const IptcItem& item) {
  using namespace metadata;
  std::optional<std::string_view> refusal;
  if (item.dataset == iptc_dataset::kCategory) refusal = CheckIptcCategory(item.value);
  if (item.dataset == iptc_dataset::kDateCreated) refusal = CheckIptcDate(item.value, IptcDateKind::Created);
  if (item.dataset == iptc_dataset::kReleaseDate) refusal = CheckIptcDate(item.value, IptcDateKind::Release);
  if (item.value.size() >= kIptcEditLimit) refusal = "A value must be shorter than 10,240 bytes";
  if (refusal) throw WrongUsage(std::string(*refusal));
}

/// The values to be set, empty ones among them: those take the others of their dataset away.
Items ParseAssignments(const std::vector<std::string>& assignments) {
  Items items;
  for (const auto& assignment : assignments) {
    const auto equals = assignment.find('=');
    if (equals == std::string::npos) throw WrongUsage(assignment + ": is not of the form DATASET=VALUE");
    const int dataset = DatasetOf(std::string_view(assignment).substr(0, equals));
    auto value = assignment.substr(equals + 1);
    if (dataset == metadata::iptc_dataset::kDateCreated || dataset == metadata::iptc_dataset::kReleaseDate) {
      value = metadata::CleanIptcDate(value);
    }
    items.push_back({metadata::kApplicationRecord, dataset, std::move(value)});
    RequireValid(items.back());
  }
  return items;
}

Items Assigned(Items items, const Items& assigned) {
  std::erase_if(items, [&](const auto& item) {
    return std::ranges::find(assigned, item.dataset, &IptcItem::dataset) != assigned.end();
  });
  std::ranges::copy(assigned, std::back_inserter(items));
  return items;
}

/// The values of the image that can be edited.
Items EditableValues(imagefiles::ImageFile& file) {
  Items items;
  std::ranges::copy_if(file.Exif().iptc, std::back_inserter(items), [](const auto& item) {
    return item.record == metadata::kApplicationRecord && metadata::FindIptcDataset(item.dataset) != nullptr &&
           item.value.size() < metadata::kIptcEditLimit;
  });
  return items;
}

IptcResult SetInOne(const std::string& path, const IptcChange& change, const Items& assigned,
                    const imagefiles::IptcEditTools& tools) try {
  const auto file = imagefiles::CreateImageFile(path, tools.edit.options);
  if (!file) throw platform::UserError(imagefiles::messages::NoSuchImage(path));
  return ApplyIptc(*file, Assigned(change.clear ? Items() : EditableValues(*file), assigned), tools);
} catch (const platform::UserError& error) {
  return {.path = path, .items = {}, .failure = error.what()};
}

std::vector<IptcResult> SetInAll(const std::vector<std::string>& paths, const IptcChange& change, const Items& assigned,
                                 const imagefiles::IptcEditTools& tools, RunState& state) {
  constexpr int kThreads = 4;  // most of the time is spent waiting for the disk
  const bool isEachOnce = std::set<std::string>(paths.begin(), paths.end()).size() == paths.size();
  std::vector<IptcResult> results(paths.size());
  platform::LockedRecorder recorder(tools.edit.edit.recorder);
  auto edit = tools.edit;
  edit.edit.recorder = &recorder;
  JobProgress progress(paths.size());
  const auto work = [&](int index) {
    const auto i = static_cast<std::size_t>(index);
    results[i] = SetInOne(paths[i], change, assigned, {edit, tools.locale, tools.mode});
  };
  const auto finish = [&](int index) {
    const auto& result = results[static_cast<std::size_t>(index)];
    progress.text(result.path);
    if (result.failure.empty()) return;
    progress.Clear();
    state.Fail(result.failure);
  };
  const int done = platform::RunOrdered({.count = static_cast<int>(paths.size()),
                                         .threads = isEachOnce ? kThreads : 1,
                                         .begin = nullptr,
                                         .work = work,
                                         .finish = finish},
                                        state.stop);
  results.resize(static_cast<std::size_t>(done));
  return results;
}

std::vector<IptcResult> MergeIntoAll(const std::vector<std::string>& paths, const IptcChange& change,
                                     const Items& assigned, const imagefiles::IptcEditTools& tools, RunState& state) {
  const imagefiles::IptcMergeJob job{
      .paths = paths,
      .values = Assigned(metadata::LoadIptcFile(platform::AbsolutePath(change.merge)), assigned),
      .rules = {change.mergeKeywords, change.onlyReplaceEmpty, change.leaveExisting},
      .exifTimestamp = change.exifTimestamp};
  JobProgress progress(paths.size());
  JobAnswers answers(state, progress);
  const platform::SystemClock clock;
  auto results = imagefiles::MergeIptcInto(job, tools, {answers, progress, clock}, state.stop);
  if (state.stop.stop_requested()) return results;
  for (auto i = results.size(); i < paths.size(); ++i) results.push_back({.path = paths[i], .failure = kNotReached});
  return results;
}

void RequireSense(const IptcChange& change) {
  if (change.merge.empty() && change.HasRules()) throw WrongUsage("the rules of merging need --merge");
  if (!change.merge.empty() && change.clear) throw WrongUsage("--clear and --merge do not go together");
}

}  // namespace

void AddIptcChangeOptions(CLI::App& command, IptcChange& change) {
  command.add_option("--set", change.set, "DATASET=VALUE, by number or name; an empty value takes the dataset away")
      ->allow_extra_args(false);
  command.add_flag("--clear", change.clear, "Take away all values that can be edited, before anything is set");
  command.add_option("--merge", change.merge, "Put the values of this .ipt file into the images");
  command.add_flag("--merge-keywords", change.mergeKeywords, "Keep keywords and categories beside the new ones");
  command.add_flag("--only-replace-empty", change.onlyReplaceEmpty, "Leave values that are there");
  command.add_flag("--leave-existing", change.leaveExisting, "Leave values that no new one comes for");
  command.add_flag("--exif-timestamp", change.exifTimestamp, "Take date and time created from the shooting data");
}

std::vector<IptcResult> ChangeIptc(const std::vector<std::string>& paths, const IptcChange& change,
                                   imagefiles::WriteMode mode, RunState& state) {
  RequireSense(change);
  const auto assigned = ParseAssignments(change.set);
  const auto locale = platform::LocaleText::FromEnvironment();
  EditSession session(catalogue::kIptcJob, state);
  const imagefiles::IptcEditTools tools{session.Tools(), locale, mode};
  auto results = change.merge.empty() ? SetInAll(paths, change, assigned, tools, state)
                                      : MergeIntoAll(paths, change, assigned, tools, state);
  session.Finish();
  return results;
}

}  // namespace ml::cli
