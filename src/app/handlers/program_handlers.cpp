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
#include "platform/paths.h"
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

/// Empty if the user does not want it, or it fails.
std::string ConvertForEditor(CommandContext& context, const std::string& path) {
  if (context.session.Ask().ask(ConvertNowQuestion(path)) != platform::Button::Yes) return {};
  const auto made = ConvertRawImage(context, path);
  const auto file = std::ranges::find(made, path, &rawconvert::ConvertedFile::source);
  return file != made.end() && file->result == rawconvert::Converted::Yes ? file->output : std::string();
}

/// What the editor gets for the image at `path`; empty for nothing.
std::string FileForEditor(CommandContext& context, const std::string& path) {
  const auto& settings = context.session.settings;
  if (settings.editor.editorSupportsRaw != 0 || !imagefiles::IsRawFile(path)) return path;
  const auto directory = rawconvert::ConversionDirectory(path, options::DirectoryChoiceOf(settings));
  const auto format = static_cast<rawconvert::OutputFormat>(settings.raw.convertFormat);
  auto converted = rawconvert::FindConverted(path, directory, format);
  return converted.empty() ? ConvertForEditor(context, path) : converted;
}

/// Of the image at hand, without which these commands are off.
std::string TargetPath(const Session& session) {
  return session.list.files.at(static_cast<std::size_t>(session.TargetIndex()));
}

void EditImage(CommandContext& context) {
  auto& session = context.session;
  const auto paths = session.settings.editor.allowMultiEdit != 0 ? TargetsOf(context, kSelectToEdit)
                                                                 : std::vector{TargetPath(session)};
  for (const auto& path : paths) {
    const auto file = platform::Exists(path) ? FileForEditor(context, path) : path;
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
