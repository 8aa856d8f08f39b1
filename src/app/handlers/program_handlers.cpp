#include <algorithm>
#include <string>
#include <vector>

#include "app/command_runner.h"
#include "app/handlers/convert_image.h"
#include "app/jobs/image_job.h"
#include "app/program_messages.h"
#include "app/session.h"
#include "imagefiles/raw_files.h"
#include "options/conversion_options_of.h"
#include "platform/companion_set.h"
#include "platform/errors.h"
#include "platform/read_directory.h"
#include "platform/start_program.h"
#include "platform/text.h"
#include "rawconvert/batch/find_converted.h"
#include "rawconvert/batch/output_directory.h"

namespace ml::app {
namespace {

void OpenInEditor(const std::string& path, const settings::EditorSettings& settings) {
  std::vector<std::string> command{"xdg-open"};
  if (settings.shellOpenEditor == 0) {
    if (platform::Trim(settings.openEditorCmdLine).empty()) throw platform::UserError(std::string(kNoEditor));
    command = platform::SplitProgramLine(settings.openEditorCmdLine);
  }
  command.push_back(path);
  try {
    platform::StartProgram(command);
  } catch (const platform::StartError& error) {
    throw platform::UserError(ErrorStartingEditor(error, command));
  }
}

/// An image and what the editor gets for it; empty for nothing.
struct EditedImage {
  std::string path, file;
};

/// Empty for a raw file that has no converted file yet.
std::string FileForEditor(const settings::Settings& settings, const std::string& path) {
  if (settings.editor.editorSupportsRaw != 0 || !platform::Exists(path) || !imagefiles::IsRawFile(path)) return path;
  const auto directory = rawconvert::ConversionDirectory(path, options::DirectoryChoiceOf(settings));
  return rawconvert::FindConverted(path, directory, static_cast<rawconvert::OutputFormat>(settings.raw.convertFormat));
}

/// Tells why raw files are not converted: other images are edited all the same.
std::vector<rawconvert::ConvertedFile> Convert(CommandContext& context, const std::vector<std::string>& raw) {
  try {
    return raw.size() == 1 ? ConvertRawImage(context, raw.front()) : ConvertRawImages(context, raw);
  } catch (const platform::UserError& error) {
    context.session.Ask().message({.text = error.what(), .icon = platform::BoxIcon::Error});
    return {};
  }
}

/// Has the raw files converted that have no file for the editor; it stays empty for those that the user does not want
/// to be, and where it fails.
void ConvertForEditor(CommandContext& context, std::vector<EditedImage>& images) {
  std::vector<std::string> raw;
  for (const auto& image : images) {
    if (image.file.empty()) raw.push_back(image.path);
  }
  if (raw.empty() || context.session.Ask().ask(ConvertNowQuestion(raw)) != platform::Button::Yes) return;
  const auto made = Convert(context, raw);
  for (auto& image : images) {
    if (!image.file.empty()) continue;
    const auto converted = std::ranges::find(made, image.path, &rawconvert::ConvertedFile::source);
    if (converted != made.end() && converted->result == rawconvert::Converted::Yes) image.file = converted->output;
  }
}

/// Of the image at hand, without which these commands are off.
std::string TargetPath(const Session& session) {
  return session.list.files.at(static_cast<std::size_t>(session.TargetIndex()));
}

void EditImage(CommandContext& context) {
  auto& session = context.session;
  const auto paths = session.settings.editor.allowMultiEdit != 0 ? TargetsOf(context, kSelectToEdit)
                                                                 : std::vector{TargetPath(session)};
  std::vector<EditedImage> images;
  images.reserve(paths.size());
  for (const auto& path : paths) images.push_back({path, FileForEditor(session.settings, path)});
  ConvertForEditor(context, images);
  for (const auto& [path, file] : images) {
    if (file.empty()) continue;
    if (!platform::Exists(file)) {
      session.Ask().message(UnableToFindForEdit(file));
    } else {
      OpenInEditor(file, session.settings.editor);
    }
  }
}

void PlayVideo(CommandContext& context) { platform::OpenByDesktop(TargetPath(context.session)); }

void PlaySound(CommandContext& context) {
  const auto path = TargetPath(context.session);
  const auto sound = platform::FindCompanion(path, ".wav");
  if (sound.empty()) throw platform::UserError(NoSoundNote(path));
  platform::OpenByDesktop(sound);
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::EditImage, EditImage},
    {CommandId::PlayVideo, PlayVideo},
    {CommandId::PlaySound, PlaySound},
};

}  // namespace

std::span<const HandlerRow> ProgramHandlers() { return kHandlers; }

}  // namespace ml::app
