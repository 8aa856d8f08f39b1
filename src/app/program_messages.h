#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/path_lines.h"
#include "platform/interaction.h"
#include "platform/start_program.h"

/// What the commands that hand images to other programs say.
namespace ml::app {

inline constexpr std::string_view kSelectToEdit = "Please select an image to be edited";
inline constexpr std::string_view kNoEditor =
    "No program is named in the Preferences (Editor, Command line) to edit images with.";

inline std::string NoSoundNote(const std::string& path) { return "There is no sound note beside:\n" + path; }

inline platform::MessageBox UnableToFindForEdit(const std::string& path) {
  return {.text = "Unable to find file:\n" + path,
          .caption = "Error trying to edit image",
          .icon = platform::BoxIcon::Error};
}

/// About one raw file, or about several at once.
inline platform::MessageBox ConvertNowQuestion(const std::vector<std::string>& paths) {
  const bool one = paths.size() == 1;
  return {.text = PathLines(paths).substr(1) + (one ? "\nis a raw file which doesn't appear to\nhave been converted.\n"
                                                      "Do you wish to convert it now?"
                                                    : "\nare raw files which don't appear to\nhave been converted.\n"
                                                      "Do you wish to convert them now?"),
          .icon = platform::BoxIcon::Question,
          .buttons = platform::Buttons::YesNo};
}

/// Why the editor did not start, and how it was called.
inline std::string ErrorStartingEditor(const platform::StartError& error, const std::vector<std::string>& command) {
  static constexpr std::string_view kReasons[] = {
      "ENOENT: File or path not found\n", "E2BIG: Argument list exceeds 1024 bytes\n",
      "ENOEXEC: Specified file is not executable or has invalid executable-file format\n",
      "ENOMEM: Not enough memory is available to execute new process\n"};
  std::string text = "Error trying to edit file:\n";
  const auto failure = static_cast<std::size_t>(error.Failure());
  text += failure < std::size(kReasons) ? std::string(kReasons[failure]) : error.Reason() + "\n";
  text += "cmd: " + command.front() + "\n";
  for (std::size_t i = 0; i < command.size(); ++i) text += "arg " + std::to_string(i) + ": " + command[i] + "\n";
  text.pop_back();
  return text;
}

}  // namespace ml::app
