#include "app/handlers/convert_image.h"

#include <QScopeGuard>
#include <optional>
#include <string>
#include <vector>

#include "app/command_runner.h"
#include "app/convert_messages.h"
#include "app/convert_settings.h"
#include "app/file_dialogs.h"
#include "app/jobs/convert_job.h"
#include "app/main_frame.h"
#include "app/session.h"
#include "imagefiles/eos1d_test.h"
#include "imagefiles/raw_files.h"
#include "options/conversion_options_of.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "rawconvert/model_support.h"
#include "rawconvert/ui/conversion_dialog.h"

namespace ml::app {
namespace {

using rawconvert::ConversionChoice;
using rawconvert::ui::ConversionAnswer;
using rawconvert::ui::ConversionDialog;
using rawconvert::ui::ConversionQuestion;

/// What a dialog was asked about its first image, and told.
struct Asked {
  ConversionAnswer answer = ConversionAnswer::Cancel;
  ConversionChoice choice;
  rawconvert::BatchConversion batch;  ///< without files
};

/// The dialog over `path` and `batchCount` images in all. Once it is accepted, the settings remember what it was told.
Asked AskConversion(CommandContext& context, const std::string& path, const metadata::ExifData& exif,
                    std::optional<int> batchCount) {
  auto& session = context.session;
  auto& settings = session.settings;
  Asked asked;
  auto& choice = asked.choice;
  choice = ConversionChoiceOf(settings);
  auto& options = asked.batch.options;
  options = options::ConversionOptionsOf(settings, exif, session.locale, session.Ask());
  choice.profiles = {options.normalProfile, options.linearProfile};
  const auto family = rawconvert::FamilyOf(path, exif);
  rawconvert::OpenChoice(choice, family, exif);
  const auto table = options::RawProfileTableOf(settings);
  const ConversionQuestion question{
      .path = path,
      .exif = exif,
      .family = family,
      .batch = batchCount.has_value(),
      .count = batchCount.value_or(1),
      .selection = session.mode != ViewMode::Main && session.State().selectedCount > 0,
      .profiles = table,
      .chooseDirectory = [](QWidget& parent, const std::string& start) { return ChooseDirectory(parent, start); }};
  ConversionDialog dialog(question, choice, session.Ask(), &context.frame);
  asked.answer = dialog.RunAt(settings.dialogPlaces[batchCount ? "BatchConvert" : "ConvertRawImage"]);
  if (asked.answer == ConversionAnswer::Cancel) return asked;
  choice = dialog.Choice();
  rawconvert::AcceptChoice(choice, family);
  PutConversionChoice(choice, settings);
  asked.batch.outputDirectory = rawconvert::ConversionDirectory(path, choice.directory);
  asked.batch.appendMethodLetter = choice.appendMethodLetter;
  options.format = choice.format;
  options.quality = choice.quality;
  options.resolution = choice.resolution;
  options.normalProfile = choice.profiles.normal;
  options.linearProfile = choice.profiles.linear;
  return asked;
}

/// Whether a file beside the one at hand is developed along with it: a TIFF file counts as the menus see it.
bool GoesAlong(const std::string& path) {
  return platform::EndsWithNoCase(path, ".tif") ? imagefiles::catalogueEos1D(path) : imagefiles::IsRawFile(path);
}

/// `first`, and then all others, or the selected ones, that are raw.
std::vector<std::string> WithOthers(const Session& session, const std::string& first, bool selected) {
  std::vector<std::string> files{first};
  const auto& list = session.list;
  for (std::size_t i = 0; i < list.files.size(); ++i) {
    const auto& path = list.files[i];
    if (path == first || (selected && !list.marks[i].selected)) continue;
    if (GoesAlong(path)) files.push_back(path);
  }
  return files;
}

void ConvertImage(CommandContext& context) {
  const int index = context.session.TargetIndex();
  if (index < 0) return;
  const std::string path = context.session.list.files[static_cast<std::size_t>(index)];
  ConvertRawImage(context, path);
}

/// Of the list what is selected and raw; in the main view all of it. Kept: that leaves out NEF files.
std::vector<std::string> FilesOfBatch(const Session& session) {
  const bool all = session.mode == ViewMode::Main;
  std::vector<std::string> files;
  for (std::size_t i = 0; i < session.list.files.size(); ++i) {
    const auto& path = session.list.files[i];
    const bool named = platform::EndsWithNoCase(path, ".crw") || platform::EndsWithNoCase(path, ".tif");
    if ((all ? named : session.list.marks[i].selected) && GoesAlong(path)) files.push_back(path);
  }
  return files;
}

void BatchConvert(CommandContext& context) {
  auto& session = context.session;
  const auto files = FilesOfBatch(session);
  if (files.empty()) {
    const auto sentence = session.mode == ViewMode::Main ? kNothingToConvert : kSelectToConvert;
    return session.Ask().message({.text = std::string(sentence)});
  }
  ConvertRawImages(context, files);
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::ConvertRawImage, ConvertImage},
    {CommandId::BatchConvert, BatchConvert},
};

}  // namespace

std::vector<rawconvert::ConvertedFile> ConvertRawImage(CommandContext& context, const std::string& path) {
  auto& session = context.session;
  const bool selection = session.mode != ViewMode::Main && session.State().selectedCount > 0;
  const metadata::ExifData exif(path, session.ImageOptions().ForExif());
  rawconvert::RequireConvertible(exif);
  auto asked = AskConversion(context, path, exif, std::nullopt);
  if (asked.answer == ConversionAnswer::Cancel) return {};
  asked.batch.files = asked.answer == ConversionAnswer::One ? std::vector{path} : WithOthers(session, path, selection);
  return RunConversion(context, asked.batch, asked.choice.settings);
}

std::vector<rawconvert::ConvertedFile> ConvertRawImages(CommandContext& context,
                                                        const std::vector<std::string>& files) {
  auto& session = context.session;
  // A batch is neither post-processed nor bound to one white balance, whatever single images were told.
  auto& raw = session.settings.raw;
  const auto restore = qScopeGuard([&raw, postProcess = raw.postProcess, same = raw.sameWhiteBalance] {
    raw.postProcess = postProcess;
    raw.sameWhiteBalance = same;
  });
  raw.postProcess = raw.sameWhiteBalance = 0;
  const metadata::ExifData exif(files.front(), session.ImageOptions().ForExif());
  auto asked = AskConversion(context, files.front(), exif, static_cast<int>(files.size()));
  if (asked.answer == ConversionAnswer::Cancel) return {};
  asked.batch.files = files;
  return RunConversion(context, asked.batch, asked.choice.settings);
}

std::span<const HandlerRow> ConvertHandlers() { return kHandlers; }

}  // namespace ml::app
