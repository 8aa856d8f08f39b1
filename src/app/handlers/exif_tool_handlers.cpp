#include <string>

#include "app/command_runner.h"
#include "app/dialogs/exif_copy_dialog.h"
#include "app/dialogs/export_dialog.h"
#include "app/dialogs/extract_dialog.h"
#include "app/file_dialogs.h"
#include "app/jobs/image_job.h"
#include "app/jobs/tool_job.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/path_lines.h"
#include "app/session.h"
#include "imagefiles/tools/messages.h"
#include "metadata/exif_text.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

namespace messages = imagefiles::tool_messages;
using imagefiles::CopyTargets;
using imagefiles::EditTools;
using imagefiles::ExportMode;
using imagefiles::ExportSettings;
using imagefiles::ExtractSettings;
using imagefiles::ToolReport;
using imagefiles::ToolRun;

constexpr std::string_view kCopyFromJob = "Copy EXIF Data", kCopyFromTitle = "Copy EXIF data from",
                           kCopyFromFilter =
                               "Images (*.jpg;*.jpe;*.jpeg;*.tif;*.tiff;*.crw;*.thm;*.nef;*.mrw;*.orf;"
                               "*.raf;*.pef)|*.jpg;*.jpe;*.jpeg;*.tif;*.tiff;*.crw;*.thm;*.nef;*.mrw;"
                               "*.orf;*.raf;*.pef|All files (*.*)|*.*||";

std::string Exported(int count) {
  return "EXIF data of " + std::to_string(count) + (count == 1 ? " image" : " images") + " exported";
}
std::string Extracted(int count) { return std::to_string(count) + (count == 1 ? " JPEG" : " JPEGs") + " extracted"; }

ToolImages ImagesFor(const Session& session) {
  ToolImages images{.directory = {}, .selected = session.TargetPaths(), .all = session.list.files};
  images.directory = platform::normaliseDirectory(platform::DirectoryOf(images.First()));
  return images;
}

/// What the dialog begins with, and what is remembered of its answer: a path that only follows from the directory on
/// show does not fit into the next one.
std::string OrSuggested(const std::string& remembered, const std::string& suggested) {
  return remembered.empty() ? suggested : remembered;
}
std::string UnlessSuggested(const std::string& answer, const std::string& suggested) {
  return answer == suggested ? std::string() : answer;
}

/// What could not be done, and why, a line for each image.
void TellNotes(CommandContext& context, const ToolReport& report) {
  std::vector<std::string> notes;
  for (const auto& item : report) {
    if (item.note.empty()) continue;
    const bool named = item.note.find(item.path) != std::string::npos || item.note.find(item.output) == 0;
    notes.push_back(named ? item.note : item.path + ": " + item.note);
  }
  if (notes.empty()) return;
  context.session.Ask().message({.text = PathLines(notes).substr(1)});
}

void CopyExif(CommandContext& context) {
  auto& session = context.session;
  if (session.list.Empty()) return;
  const auto images = ImagesFor(session);
  auto& remembered = session.memory.tools.copyDirectory;
  auto& toTiffs = session.settings.shootingData.copyExifDataToTiffs;
  const auto choice = AskExifCopy(context.frame, session.settings.dialogPlaces["ExifCopy"], images,
                                  {.directory = OrSuggested(remembered, images.directory),
                                   .targets = toTiffs != 0 ? CopyTargets::JpegsAndTiffs : CopyTargets::JpegsOnly});
  if (!choice) return;
  remembered = UnlessSuggested(choice->directory, images.directory);
  toTiffs = choice->targets == CopyTargets::JpegsAndTiffs ? 1 : 0;
  bool cancelled = true;
  const auto report =
      RunToolJob(context, {std::string(messages::kCopyExifTitle), [&](const EditTools& tools, const ToolRun& run) {
                             CopyExifBatch({.sources = choice->all ? images.all : images.selected,
                                            .directory = choice->directory,
                                            .targets = choice->targets},
                                           tools, run);
                             cancelled = false;
                           }});
  if (cancelled) return;
  session.Ask().message({.text = messages::CopiedTo(CountDone(report))});
}

void CopyExifFrom(CommandContext& context) {
  auto& session = context.session;
  const int index = session.TargetIndex();
  if (index < 0) return;
  const auto destination = session.list.files[static_cast<std::size_t>(index)];
  auto& remembered = session.memory.tools.copySource;
  const auto source = OpenFile(context.frame, {.title = std::string(kCopyFromTitle),
                                               .filter = std::string(kCopyFromFilter),
                                               .start = OrSuggested(remembered, session.Images().Directory())});
  if (!source) return;
  remembered = source->path;
  bool copied = false;
  RunToolJob(context, {std::string(kCopyFromJob), [&](const EditTools& tools, const ToolRun& run) {
                         const auto result = imagefiles::CopyExif(source->path, destination, tools, run.host.ask);
                         copied = result == imagefiles::CopyExifResult::Copied;
                         if (copied) run.told({.path = source->path, .output = destination});
                       }});
  if (copied) ShowStatus(context, "EXIF data copied from " + std::string(platform::FileName(source->path)));
}

ExportChoice RememberedExport(const settings::ShootingDataSettings& from, const std::string& output) {
  ExportChoice choice{.ownFormat = from.exportFormatString, .ownFields = from.exportCustomFormat != 0};
  auto& to = choice.settings;
  to.mode = from.exportOnePerImage != 0 ? ExportMode::LinePerImage : ExportMode::TextPerImage;
  to.delimiter = static_cast<char>(from.exportDelimiter);
  to.header = from.exportHeadings != 0;
  to.output = output;
  return choice;
}

void Remember(const ExportChoice& from, settings::ShootingDataSettings& to) {
  to.exportOnePerImage = from.settings.mode == ExportMode::LinePerImage ? 1 : 0;
  to.exportDelimiter = static_cast<std::uint8_t>(from.settings.delimiter);
  to.exportHeadings = from.settings.header ? 1 : 0;
  to.exportCustomFormat = from.ownFields ? 1 : 0;
  to.exportFormatString = from.ownFormat;
}

void ExportExif(CommandContext& context) {
  auto& session = context.session;
  if (session.list.Empty()) return;
  const auto images = ImagesFor(session);
  const auto suggested = platform::JoinPath(images.directory, imagefiles::kDefaultExportName);
  auto& remembered = session.memory.tools.exportFile;
  const auto options = session.ImageOptions().ForExif();
  metadata::ExifData first(images.First(), options);
  const auto example = [&](const ExportSettings& settings) {
    if (settings.mode == ExportMode::TextPerImage) return metadata::GetPropertiesText(first, session.locale);
    const auto line = imagefiles::ExportLine(settings, first, options, session.locale);
    return settings.header ? imagefiles::ExportHeader(settings) + "\n" + line : line;
  };
  auto& keys = session.settings.shootingData;
  const auto choice = AskExport(context.frame, session.settings.dialogPlaces["ExportExif"], images,
                                RememberedExport(keys, OrSuggested(remembered, suggested)), example);
  if (!choice) return;
  Remember(*choice, keys);
  remembered = UnlessSuggested(choice->settings.output, suggested);
  const auto write = [&](const EditTools& tools, const ToolRun& run) {
    imagefiles::ExportExif(choice->all ? images.all : images.selected, choice->settings, session.locale, tools, run);
  };
  const auto report = RunToolJob(context, {std::string(messages::kExportTitle), write});
  if (const int count = CountDone(report); count > 0) ShowStatus(context, Exported(count));
  TellNotes(context, report);
}

ToolImages RawFilesFor(const Session& session) {
  auto raws = ImagesFor(session);
  const auto isOther = [](const auto& path) { return !imagefiles::MayHoldJpeg(path); };
  std::erase_if(raws.selected, isOther);
  std::erase_if(raws.all, isOther);
  return raws;
}

ExtractSettings RememberedExtract(const Session& session, const std::string& directory) {
  const auto& keys = session.settings.shootingData;
  return {.directory = directory,
          .exif = keys.extractJpegExif != 0,
          .rotate = keys.extractJpegRotate != 0,
          .timestamp = keys.extractJpegTimestamp != 0,
          .viewingJpegs = keys.extractJpegCopyViewingJpegs != 0,
          .overwrite = session.memory.tools.overwriteJpegs};
}

void Remember(const ExtractSettings& from, Session& session) {
  auto& keys = session.settings.shootingData;
  keys.extractJpegExif = from.exif ? 1 : 0;
  keys.extractJpegRotate = from.rotate ? 1 : 0;
  keys.extractJpegTimestamp = from.timestamp ? 1 : 0;
  keys.extractJpegCopyViewingJpegs = from.viewingJpegs ? 1 : 0;
  session.memory.tools.overwriteJpegs = from.overwrite;
}

void ExtractJpegs(CommandContext& context) {
  auto& session = context.session;
  if (session.list.Empty()) return;
  const auto raws = RawFilesFor(session);
  if (raws.all.empty()) throw platform::UserError(std::string(messages::kSelectToExtract));
  const auto suggested = imagefiles::DefaultExtractDirectory(raws.First());
  auto& remembered = session.memory.tools.extractDirectory;
  const auto choice = AskExtract(context.frame, session.settings.dialogPlaces["ExtractJpegs"], raws,
                                 RememberedExtract(session, OrSuggested(remembered, suggested)));
  if (!choice) return;
  Remember(choice->settings, session);
  remembered = UnlessSuggested(choice->settings.directory, suggested);
  if (!imagefiles::EnsureExtractDirectory(choice->settings.directory, session.Ask())) return;
  context.view.RefreshTree();  // it may be new
  const auto extract = [&](const EditTools& tools, const ToolRun& run) {
    imagefiles::ExtractJpegs(choice->all ? raws.all : raws.selected, choice->settings, tools, run);
  };
  const auto report = RunToolJob(context, {std::string(messages::kExtractTitle), extract});
  if (const int count = CountDone(report); count > 0) ShowStatus(context, Extracted(count));
  TellNotes(context, report);
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::ExifCopy, CopyExif},
    {CommandId::CopyExifFrom, CopyExifFrom},
    {CommandId::ExportExif, ExportExif},
    {CommandId::ExtractJpegs, ExtractJpegs},
};

}  // namespace

std::span<const HandlerRow> ExifToolHandlers() { return kHandlers; }

}  // namespace ml::app
