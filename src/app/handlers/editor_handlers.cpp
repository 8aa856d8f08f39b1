#include <algorithm>
#include <string>
#include <vector>

#include "app/command_runner.h"
#include "app/editor_messages.h"
#include "app/handlers/convert_image.h"
#include "app/jobs/image_job.h"
#include "app/session.h"
#include "imagefiles/raw_files.h"
#include "options/conversion_options_of.h"
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

void EditImage(CommandContext& context) {
  auto& session = context.session;
  std::vector<std::string> paths;
  if (session.settings.editor.allowMultiEdit != 0) {
    paths = TargetsOf(context, kSelectToEdit);
  } else if (const int index = session.TargetIndex(); index >= 0) {
    paths.push_back(session.list.files[static_cast<std::size_t>(index)]);
  }
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

constexpr HandlerRow kHandlers[] = {{CommandId::EditImage, EditImage}};

}  // namespace

std::span<const HandlerRow> EditorHandlers() { return kHandlers; }

}  // namespace ml::app
