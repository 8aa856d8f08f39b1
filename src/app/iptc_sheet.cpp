#include "app/iptc_sheet.h"

#include <algorithm>

#include "app/edit_messages.h"
#include "app/file_dialogs.h"
#include "app/jobs/image_job.h"
#include "app/messages.h"
#include "app/session.h"
#include "catalogue/job_names.h"
#include "imagefiles/edits/iptc_edits.h"
#include "imagefiles/raw_files.h"
#include "metadata/format_strings/format_strings.h"
#include "options/engine_options.h"
#include "platform/edit_batch.h"
#include "platform/errors.h"
#include "platform/ui/job_window.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using metadata::ui::IptcApplier;
using metadata::ui::IptcSheetImages;

const platform::Clock& TheClock() {
  static const platform::SystemClock clock;
  return clock;
}

void ApplyToOne(Session& session, const std::string& path, const metadata::IptcSheetValues& values) {
  const auto options = session.ImageOptions();
  imagefiles::CompanionFinder companions(options);
  platform::EditBatch batch(session.Journal().Edits(), std::string(catalogue::kIptcJob));
  {
    const auto file = imagefiles::CreateImageFile(path, options);
    if (!file) throw platform::UserError(ImageIsGone(path));
    const imagefiles::EditTools tools{.options = options, .companions = companions, .edit = {.recorder = &batch}};
    imagefiles::ApplyIptc(*file, metadata::ItemsOf(values, {}), {tools, session.locale});
  }
  batch.Commit();
  session.FilesChanged({});
}

/// A failure is told over the sheet; what was written until then counts.
metadata::IptcBatchReport ApplyToMany(Session& session, const metadata::IptcBatch& wanted, QWidget& parent) {
  const auto options = session.ImageOptions();
  imagefiles::CompanionFinder companions(options);
  platform::ui::QtInteraction ask(&parent);
  platform::EditBatch batch(session.Journal().Edits(), std::string(catalogue::kIptcJob));
  const imagefiles::EditTools tools{.options = options, .companions = companions, .edit = {.recorder = &batch}};
  const imagefiles::IptcMergeJob job{.paths = wanted.paths,
                                     .values = metadata::ItemsOf(wanted.values, {}),
                                     .rules = wanted.rules,
                                     .exifTimestamp = wanted.exifTimestamp};
  std::vector<imagefiles::IptcResult> results;
  platform::ui::RunJob(&parent, JobLookOf(session, catalogue::kIptcJob), ask,
                       [&](const platform::JobHost& host, const std::stop_token& stop) {
                         results = imagefiles::MergeIptcInto(job, {tools, session.locale}, host, stop);
                       });
  batch.Commit();
  session.FilesChanged({});
  metadata::IptcBatchReport report;
  for (const auto& result : results) {
    if (result.failure.empty()) ++(result.changed ? report.written : report.unchanged);
  }
  report.missed = static_cast<int>(wanted.paths.size()) - report.written - report.unchanged;
  return report;
}

IptcApplier ApplierFor(Session& session) {
  return {[&session](const auto& path, const auto& values) { ApplyToOne(session, path, values); },
          [&session](const auto& batch, QWidget& parent) { return ApplyToMany(session, batch, parent); }};
}

std::vector<std::string> HoldingIptc(std::vector<std::string> paths) {
  std::erase_if(paths, [](const auto& path) { return !imagefiles::CanHoldIptc(path); });
  return paths;
}

/// The selection is not seen in the main view, so it does not count there.
IptcSheetImages ImagesOf(const Session& session, const std::string& target) {
  const auto& list = session.list;
  IptcSheetImages images;
  images.all = HoldingIptc(list.files);
  if (session.mode != ViewMode::Main) images.selected = HoldingIptc(list.SelectedPaths());
  const bool isSelected = std::ranges::find(images.selected, target) != images.selected.end();
  images.steps = images.selected.size() > 1 && isSelected ? images.selected : images.all;
  const auto first = std::ranges::find(images.steps, target);
  images.first = static_cast<std::size_t>(first - images.steps.begin());
  return images;
}

std::optional<std::string> ChooseToLoad(const Session& session, QWidget& parent) {
  const auto answer = OpenFile(parent, {.title = std::string(kLoadIptcTitle),
                                        .filter = std::string(kLoadIptcFilter),
                                        .start = session.Images().Directory()});
  if (!answer) return std::nullopt;
  return answer->path;
}

std::optional<std::string> ChooseToSave(const Session& session, QWidget& parent) {
  return platform::ui::QtInteraction(&parent).saveAs({.title = std::string(kSaveIptcTitle),
                                                      .filter = std::string(kSaveIptcFilter),
                                                      .defaultExtension = ".ipt",
                                                      .start = session.Images().Directory()});
}

}  // namespace

std::unique_ptr<metadata::ui::CIptcPropertySheet> MakeIptcSheet(Session& session, QWidget& parent) {
  const int target = session.TargetIndex();
  if (target < 0) return nullptr;
  auto images = ImagesOf(session, session.list.files[static_cast<std::size_t>(target)]);
  if (images.first == images.steps.size()) return nullptr;
  const auto& from = session.settings.iptc;
  const metadata::ui::IptcBatchRules rules{{.mergeKeywords = from.mergeKeywords != 0,
                                            .onlyReplaceEmpty = from.onlyReplaceEmpty != 0,
                                            .leaveExistingIfNewEmpty = from.leaveExistingIfNewEmpty != 0},
                                           from.exifTimestamp != 0};
  metadata::ui::IptcSheetHost host{
      .read =
          [&session](const std::string& path) {
            return metadata::ExifData(path, options::ExifOptionsOf(session.settings));
          },
      .chooseFileToLoad = [&session](QWidget& sheet) { return ChooseToLoad(session, sheet); },
      .chooseFileToSave = [&session](QWidget& sheet) { return ChooseToSave(session, sheet); },
      .expand =
          [&session](metadata::ExifData image, std::string_view format) {
            const auto options = options::ExifOptionsOf(session.settings);
            return metadata::ExpandFormatString(format, {image, options, session.locale});
          },
      .clock = TheClock(),
      .apply = ApplierFor(session)};
  return std::make_unique<metadata::ui::CIptcPropertySheet>(std::move(images), rules, std::move(host), &parent);
}

void TakeIptcRules(const metadata::ui::IptcBatchRules& rules, Session& session) {
  auto& to = session.settings.iptc;
  to.mergeKeywords = rules.merge.mergeKeywords ? 1 : 0;
  to.onlyReplaceEmpty = rules.merge.onlyReplaceEmpty ? 1 : 0;
  to.leaveExistingIfNewEmpty = rules.merge.leaveExistingIfNewEmpty ? 1 : 0;
  to.exifTimestamp = rules.exifTimestamp ? 1 : 0;
}

}  // namespace ml::app
