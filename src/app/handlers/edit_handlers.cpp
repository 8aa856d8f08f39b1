#include <QScopeGuard>
#include <string>

#include "app/command_runner.h"
#include "app/dialogs/comment_dialog.h"
#include "app/dialogs/date_shift_dialog.h"
#include "app/dialogs/regenerate_dialog.h"
#include "app/edit_messages.h"
#include "app/file_dialogs.h"
#include "app/handlers/turn_image.h"
#include "app/jobs/image_job.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/messages.h"
#include "app/session.h"
#include "catalogue/job_names.h"
#include "imagefiles/edits/adjust_dates.h"
#include "imagefiles/edits/developed_jpegs.h"
#include "imagefiles/edits/icc_edits.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/edits/jpeg_thumbnail.h"
#include "imagefiles/edits/jpeg_turn.h"
#include "imagefiles/format_table.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

using imagefiles::EditTools;
using imaging::Turn;
using platform::ui::JobWindowShows;

/// Changes one image; called on the job's thread.
using Edit = std::function<void(const std::string& path, const EditTools& tools, const platform::JobHost& host)>;

struct EditJob {
  std::string_view title, verb;
  std::vector<std::string> paths;
  Edit edit;
  QWidget* over = nullptr;                              ///< a window that covers the image on show, for boxes
  JobWindowShows forSingleCrw = JobWindowShows::Never;  ///< most edits of one are done at once
};

/// The job with all that edits need. Afterwards thumbnails and the image on show are made anew, whatever came of it;
/// the latter not while a window covers it.
void RunEdits(CommandContext& context, const EditJob& job) {
  auto& session = context.session;
  if (job.paths.empty()) return;
  const auto options = session.ImageOptions();
  imagefiles::CompanionFinder companions(options);
  const bool singleCrw = job.paths.size() == 1 && platform::EndsWithNoCase(job.paths.front(), ".crw");
  const auto settle = [&] {
    session.FilesChanged(job.paths);
    if (session.mode != ViewMode::Thumbnails && job.over == nullptr) context.view.ReloadImage();
  };
  const auto act = [&](const std::string& path, const ImageJobTools& tools) {
    try {
      job.edit(path, {.options = options, .companions = companions, .edit = {.recorder = &tools.batch}}, tools.host);
    } catch (const platform::UserError& error) {
      throw platform::UserError(NamingTheFile(error.what(), path));
    }
  };
  try {
    RunImageJob(context, {.title = std::string(job.title),
                          .progressVerb = std::string(job.verb),
                          .paths = job.paths,
                          .act = act,
                          .window = singleCrw ? job.forSingleCrw : JobWindowShows::AfterHalfASecond,
                          .over = job.over});
  } catch (...) {
    settle();
    throw;
  }
  settle();
}

/// Whether a TIFF may be rewritten; only the first edit of a file in a job asks, as long as the user does not mind.
bool MayRewriteTiff(const std::string& path, int& warn, const imagefiles::ImageFileOptions& options,
                    platform::Interaction& ask) {
  if (!platform::EndsWithNoCase(path, ".tif") || warn == 0) return true;
  const metadata::ExifData exif(path, options.ForExif());
  if (exif.isEos1DRaw || exif.tiffThumbnailOnly) return true;
  const auto answer = ask.askCheck(RotateTiffQuestion(path), std::string(kDoNotAskAgain));
  warn = answer.checked ? 0 : 1;
  return answer.button == platform::Button::Ok;
}

void TellTurnErrors(CommandContext& context, const std::function<void()>& act) {
  try {
    act();
  } catch (const platform::UserError& error) {
    context.session.Ask().message(ErrorRotating(error.what()));
  }
}

void TurnAll(CommandContext& context, const std::vector<std::string>& paths, Turn turn, QWidget* over = nullptr) {
  int& setting = context.session.settings.shootingData.tiffRotateWarning;
  int warn = setting;
  const auto keep = qScopeGuard([&] { setting = warn; });
  const auto rotate = [&](const std::string& path, const EditTools& tools, const platform::JobHost& host) {
    if (!MayRewriteTiff(path, warn, tools.options, host.ask)) return;
    if (const auto file = imagefiles::CreateImageFile(path, tools.options)) imagefiles::Rotate(*file, turn, tools);
  };
  RunEdits(context, {.title = catalogue::kRotateJob, .verb = "Rotating", .paths = paths, .edit = rotate, .over = over});
}

template <Turn turn>
void RotateImages(CommandContext& context) {
  TellTurnErrors(context, [&] { TurnAll(context, TargetsOf(context, kSelectToRotate), turn); });
}

void EditComments(CommandContext& context) {
  auto& session = context.session;
  const int index = session.TargetIndex();
  if (index < 0) return;
  const auto path = session.list.files[static_cast<std::size_t>(index)];
  const auto before = imagefiles::CreateImageFile(path, session.ImageOptions());
  if (!before) return;
  if (!before->Row().commentRefusal.empty()) throw platform::UserError(std::string(before->Row().commentRefusal));
  const auto text = EditComment(context.frame, std::string(platform::FileName(path)), before->GetComment());
  if (!text) return;
  const auto write = [&](const std::string& changed, const EditTools& tools, const platform::JobHost&) {
    const auto file = imagefiles::CreateImageFile(changed, tools.options);
    if (file) imagefiles::SetComment(*file, *text, tools);
  };
  RunEdits(context,
           {.title = catalogue::kCommentJob, .verb = "Writing the comment of", .paths = {path}, .edit = write});
}

DateShiftQuestion QuestionFor(const Session& session, const std::vector<std::string>& selected) {
  const auto& example = selected.empty() ? session.list.files.front() : selected.front();
  const metadata::ExifData exif(example, session.ImageOptions().ForExif());
  DateShiftQuestion question{.nothingSelected = selected.empty(),
                             .fileTimes = session.settings.shootingData.adjustTimeTimestamp != 0,
                             .exampleName = std::string(platform::FileName(example))};
  if (exif.dateRecorded) question.exampleTime = static_cast<std::time_t>(exif.shootingTime);
  return question;
}

void AdjustDateTime(CommandContext& context) {
  auto& session = context.session;
  if (session.list.Empty()) return;
  const auto selected = session.TargetPaths();
  const auto shift = AskDateShift(context.frame, QuestionFor(session, selected));
  if (!shift) return;
  session.settings.shootingData.adjustTimeTimestamp = shift->fileTimes ? 1 : 0;
  const auto adjust = [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
    try {
      imagefiles::AdjustDates(path, shift->seconds, shift->fileTimes, tools);
    } catch (const platform::UserError& error) {
      throw platform::UserError(ErrorAdjustingDate(path, error.what()));
    }
  };
  RunEdits(context, {.title = catalogue::kAdjustDateJob,
                     .verb = "Adjusting the date of",
                     .paths = shift->all ? session.list.files : selected,
                     .edit = adjust});
}

std::vector<std::string> OnlyJpegs(std::vector<std::string> paths) {
  std::erase_if(paths, [](const auto& path) { return !imagefiles::IsJpegName(path); });
  return paths;
}

void AutoRotate(CommandContext& context) {
  auto& session = context.session;
  const auto paths = OnlyJpegs(session.TargetPaths());
  if (paths.empty() && !session.list.Empty()) session.Ask().message({.text = std::string(kSelectToAutoRotate)});
  if (paths.empty()) return;
  const auto turn = [](const std::string& path, const EditTools& tools, const platform::JobHost&) {
    if (const auto file = imagefiles::CreateImageFile(path, tools.options)) imagefiles::AutoRotate(*file, tools);
  };
  TellTurnErrors(context, [&] {
    RunEdits(context, {.title = catalogue::kAutoRotateJob, .verb = "Rotating", .paths = paths, .edit = turn});
  });
}

void EmbedProfile(CommandContext& context) {
  auto& session = context.session;
  const auto paths = OnlyJpegs(TargetsOf(context, kSelectJpegs));
  if (paths.empty()) return;
  const auto profile = OpenFile(context.frame, {.title = std::string(kChooseProfileTitle),
                                                .filter = std::string(kProfileFilter),
                                                .start = session.settings.colour.monitorProfile});
  if (!profile) return;
  const auto embed = [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
    const auto file = imagefiles::CreateImageFile(path, tools.options);
    if (file && !imagefiles::EmbedIccProfile(*file, profile->path, tools)) {
      throw platform::UserError(NoPlaceForProfile(path));
    }
  };
  RunEdits(context, {.title = catalogue::kEmbedJob, .verb = "Embedding the profile in", .paths = paths, .edit = embed});
}

void RegenerateThumbnails(CommandContext& context) {
  std::vector<std::string> full;  // without room for a new one
  const auto make = [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
    const auto file = imagefiles::CreateImageFile(path, tools.options);
    if (file && !imagefiles::RegenerateThumbnail(*file, tools)) full.push_back(path);
  };
  RunEdits(context, {.title = catalogue::kThumbnailJob,
                     .verb = "Making the thumbnail of",
                     .paths = OnlyJpegs(TargetsOf(context, kSelectJpegs)),
                     .edit = make});
  if (!full.empty()) context.session.Ask().message({.text = NoRoomForThumbnails(full)});
}

void RegenerateJpegs(CommandContext& context) {
  auto& session = context.session;
  auto paths = TargetsOf(context, kSelectToRegenerate);
  std::erase_if(paths, [](const auto& path) { return !platform::EndsWithNoCase(path, ".crw"); });
  if (paths.empty()) return;
  auto& remembered = session.settings.shootingData;
  const auto settings = AskRegenerate(context.frame, static_cast<int>(paths.size()),
                                      {remembered.regenEmbeddedJpegWidth, remembered.regenEmbeddedJpegQuality});
  if (!settings) return;
  remembered.regenEmbeddedJpegWidth = settings->width;
  remembered.regenEmbeddedJpegQuality = settings->quality;
  auto& developer = session.Developer();
  const auto make = [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
    const auto file = imagefiles::CreateImageFile(path, tools.options);
    if (file) imagefiles::RegenerateEmbeddedJpeg(*file, *settings, &developer, tools);
  };
  RunEdits(context, {.title = catalogue::kRegenerateJob,
                     .verb = "Making the embedded JPEG of",
                     .paths = paths,
                     .edit = make,
                     .forSingleCrw = JobWindowShows::AfterHalfASecond});
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::RotateLeft, RotateImages<Turn::cw270>},
    {CommandId::RotateRight, RotateImages<Turn::cw90>},
    {CommandId::AutoRotateJpegs, AutoRotate},
    {CommandId::EmbedColorProfile, EmbedProfile},
    {CommandId::RegenerateJpegs, RegenerateJpegs},
    {CommandId::RegenerateThumbnails, RegenerateThumbnails},
    {CommandId::EditComments, EditComments},
    {CommandId::AdjustDateTime, AdjustDateTime},
};

}  // namespace

std::span<const HandlerRow> EditHandlers() { return kHandlers; }

void TurnImage(CommandContext& context, const std::string& path, Turn turn, QWidget& over) {
  TurnAll(context, {path}, turn, &over);
}

}  // namespace ml::app
