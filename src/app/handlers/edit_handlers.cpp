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
#include "imagefiles/edits/adjust_dates.h"
#include "imagefiles/edits/developed_jpegs.h"
#include "imagefiles/edits/icc_edits.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/edits/jpeg_thumbnail.h"
#include "imagefiles/edits/jpeg_turn.h"
#include "imagefiles/format_table.h"
#include "imagefiles/raw_files.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

using imagefiles::EditTools;
using imaging::Turn;
using platform::ui::JobWindowShows;

/// Changes one image; called on the job's thread.
using Edit = std::function<void(const std::string& path, const EditTools& tools, const platform::JobHost& host)>;

/// The job with all that edits need; without a window for a single CRW file. Afterwards thumbnails and the image on
/// show are made anew, whatever came of it; the latter not while a window covers it, `over` which boxes stand then. An
/// edit that `lasts` has a progress window for a single raw file as well.
void RunEdits(CommandContext& context, std::string_view title, std::string_view verb,
              const std::vector<std::string>& paths, const Edit& edit, QWidget* over = nullptr, bool lasts = false) {
  auto& session = context.session;
  if (paths.empty()) return;
  const auto options = session.ImageOptions();
  imagefiles::CompanionFinder companions(options);
  const bool quick = !lasts && paths.size() == 1 && platform::EndsWithNoCase(paths.front(), ".crw");
  const auto settle = [&] {
    session.FilesChanged(paths);
    if (session.mode != ViewMode::Thumbnails && over == nullptr) context.view.ReloadImage();
  };
  const auto act = [&](const std::string& path, const ImageJobTools& tools) {
    try {
      edit(path, {.options = options, .companions = companions, .edit = {.recorder = &tools.batch}}, tools.host);
    } catch (const platform::UserError& error) {
      throw platform::UserError(NamingTheFile(error.what(), path));
    }
  };
  try {
    RunImageJob(context, {.title = std::string(title),
                          .progressVerb = std::string(verb),
                          .paths = paths,
                          .act = act,
                          .window = quick ? JobWindowShows::Never : JobWindowShows::AfterHalfASecond,
                          .over = over});
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
  RunEdits(context, kRotateJob, "Rotating", paths, rotate, over);
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
  RunEdits(context, kCommentJob, "Writing the comment of", {path},
           [&](const std::string& changed, const EditTools& tools, const platform::JobHost&) {
             const auto file = imagefiles::CreateImageFile(changed, tools.options);
             if (file) imagefiles::SetComment(*file, *text, tools);
           });
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
  RunEdits(context, kAdjustDateJob, "Adjusting the date of", shift->all ? session.list.files : selected,
           [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
             try {
               imagefiles::AdjustDates(path, shift->seconds, shift->fileTimes, tools);
             } catch (const platform::UserError& error) {
               throw platform::UserError(ErrorAdjustingDate(path, error.what()));
             }
           });
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
  TellTurnErrors(context, [&] { RunEdits(context, kAutoRotateJob, "Rotating", paths, turn); });
}

void EmbedProfile(CommandContext& context) {
  auto& session = context.session;
  const auto paths = OnlyJpegs(TargetsOf(context, kSelectToEmbed));
  if (paths.empty()) return;
  const auto profile = OpenFile(context.frame, {.title = std::string(kChooseProfileTitle),
                                                .filter = std::string(kProfileFilter),
                                                .start = session.settings.colour.monitorProfile});
  if (!profile) return;
  RunEdits(context, kEmbedJob, "Embedding the profile in", paths,
           [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
             const auto file = imagefiles::CreateImageFile(path, tools.options);
             if (file && !imagefiles::EmbedIccProfile(*file, profile->path, tools)) {
               throw platform::UserError(NoPlaceForProfile(path));
             }
           });
}

void RegenerateThumbnails(CommandContext& context) {
  std::vector<std::string> full;  // without room for a new one
  RunEdits(context, kThumbnailJob, "Making the thumbnail of", OnlyJpegs(TargetsOf(context, kSelectForThumbnails)),
           [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
             const auto file = imagefiles::CreateImageFile(path, tools.options);
             if (file && !imagefiles::RegenerateThumbnail(*file, tools)) full.push_back(path);
           });
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
  RunEdits(
      context, kRegenerateJob, "Making the embedded JPEG of", paths,
      [&](const std::string& path, const EditTools& tools, const platform::JobHost&) {
        const auto file = imagefiles::CreateImageFile(path, tools.options);
        if (file) imagefiles::RegenerateEmbeddedJpeg(*file, *settings, &developer, tools);
      },
      nullptr, true);
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
