#include "imagefiles/edits/iptc_edits.h"

#include <algorithm>
#include <iterator>

#include "imagefiles/messages.h"
#include "metadata/format_strings/format_strings.h"
#include "metadata/iptc/iptc_compare.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_limits.h"
#include "platform/errors.h"
#include "platform/locked_recorder.h"
#include "platform/ordered_jobs.h"
#include "platform/read_directory.h"
#include "platform/text.h"

namespace ml::imagefiles {
namespace {

using metadata::IptcItem;
using Items = std::vector<IptcItem>;

/// Only the application record is edited; other records go with what surrounds it.
Items Edited(Items items) {
  std::erase_if(items, [](const auto& item) {
    return item.record != metadata::kApplicationRecord || item.dataset == metadata::iptc_dataset::kVersion ||
           item.value.empty();
  });
  return items;
}

/// A value that its tokens make longer than what can be edited is cut: nobody could change it any more.
Items Expanded(Items values, ImageFile& file, const IptcEditTools& tools) {
  const auto hasTokens = [](const auto& item) { return item.value.find('@') != std::string::npos; };
  if (std::ranges::none_of(values, hasTokens)) return Edited(std::move(values));
  auto exif = file.Exif();
  const auto options = tools.edit.options.ForExif();
  metadata::ExpandIptcValues(values, [&](const std::string& text) {
    const auto whole = metadata::ExpandFormatString(text, {exif, options, tools.locale});
    return std::string(platform::CutToBytes(whole, metadata::kIptcEditLimit - 1));
  });
  return Edited(std::move(values));
}

/// Of an image's values those that no editor shows, so that none can mean to take them away: datasets that nobody
/// knows, and texts too long to be edited unless there is a new one.
Items Untouched(const Items& existing, const Items& values) {
  Items kept;
  std::ranges::copy_if(existing, std::back_inserter(kept), [&](const auto& item) {
    const auto* row = metadata::FindIptcDataset(item.dataset);
    if (row == nullptr) return true;
    const bool isReplaced = !row->repeated && std::ranges::count(values, item.dataset, &IptcItem::dataset) > 0;
    return item.value.size() >= metadata::kIptcEditLimit && !isReplaced;
  });
  return kept;
}

IptcResult Put(ImageFile& file, Items items, const IptcEditTools& tools) {
  const auto& exif = file.Exif();
  IptcResult result{.path = file.Path(), .items = std::move(items)};
  result.changed = !metadata::IsSameIptc(Edited(exif.iptc), result.items);
  if (!result.changed || tools.mode == WriteMode::DryRun) return result;
  try {
    WriteIptc(file, {result.items, exif.iptcSurroundings}, tools.edit);
  } catch (const platform::UserError& error) {
    std::string reason = error.what();
    if (reason.find(file.Path()) == std::string::npos) reason = file.Path() + "\n" + reason;
    throw platform::UserError(messages::IptcNotWritten(reason));
  }
  return result;
}

IptcResult MergeIntoPath(const std::string& path, const IptcMergeJob& job, const IptcEditTools& tools) try {
  const auto file = CreateImageFile(path, tools.edit.options);
  if (file) return MergeIptcInto(*file, job, tools);
  throw platform::UserError(platform::IsNameTaken(path) ? messages::NotAnImage(path) : messages::NoSuchImage(path));
} catch (const platform::UserError& error) {
  return {.path = path, .items = {}, .failure = error.what()};
}

}  // namespace

IptcResult ApplyIptc(ImageFile& file, Items values, const IptcEditTools& tools) {
  values = Expanded(std::move(values), file, tools);
  auto items = Untouched(Edited(file.Exif().iptc), values);
  std::ranges::move(values, std::back_inserter(items));
  return Put(file, std::move(items), tools);
}

IptcResult MergeIptcInto(ImageFile& file, const IptcMergeJob& job, const IptcEditTools& tools) {
  const auto& exif = file.Exif();
  auto rules = job.rules;
  rules.timestamp = job.exifTimestamp && exif.dateRecorded ? static_cast<std::time_t>(exif.shootingTime) : 0;
  return Put(file, metadata::MergeIptc(exif.iptc, Expanded(job.values, file, tools), rules), tools);
}

std::vector<IptcResult> MergeIptcInto(const IptcMergeJob& job, const IptcEditTools& tools,
                                      const platform::JobHost& host, const std::stop_token& stop) {
  std::vector<IptcResult> results(job.paths.size());
  platform::LockedRecorder recorder(tools.edit.edit.recorder);
  EditTools edit = tools.edit;
  edit.edit.recorder = &recorder;
  std::stop_source end;
  const std::stop_callback passOn(stop, [&] { end.request_stop(); });
  const auto count = static_cast<int>(results.size());
  const auto work = [&](int index) {
    const auto i = static_cast<std::size_t>(index);
    results[i] = MergeIntoPath(job.paths[i], job, {edit, tools.locale, tools.mode});
    if (!results[i].failure.empty()) end.request_stop();
  };
  const auto finish = [&](int index) {
    host.progress.position(index + 1, count);
    host.progress.percent((index + 1) * 100 / count);
    host.progress.text(job.paths[static_cast<std::size_t>(index)]);
  };
  const int done = platform::RunOrdered(
      {.count = count, .threads = job.threads, .begin = nullptr, .work = work, .finish = finish}, end.get_token());
  results.resize(static_cast<std::size_t>(done));
  const auto failed = std::ranges::find_if(results, [](const auto& result) { return !result.failure.empty(); });
  if (failed != results.end()) host.ask.message({.text = failed->failure, .icon = platform::BoxIcon::Error});
  return results;
}

}  // namespace ml::imagefiles
