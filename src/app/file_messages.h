#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/path_lines.h"
#include "catalogue/delete_files.h"
#include "platform/edit_journal.h"
#include "platform/interaction.h"

/// What the commands that change files say.
namespace ml::app {

inline constexpr std::string_view kSelectToCopy = "Please select one or more files\nto copy to another folder.";
inline constexpr std::string_view kSelectToMove = "Please select one or more files\nto move to another folder.";
inline constexpr std::string_view kSelectToDelete = "Please select one or more files to delete.";
inline constexpr std::string_view kCopyTitle = "Copy Images To Directory", kMoveTitle = "Move Images To Directory",
                                  kDestinationPrompt = "Enter destination directory:";

inline platform::MessageBox DeleteQuestion(std::size_t count, catalogue::DeleteTo to) {
  using catalogue::DeleteTo;
  const bool one = count == 1;
  std::string text = "Are you sure you want to delete ";
  text += one ? "this image" : "these " + std::to_string(count) + " images";
  if (to == DeleteTo::Nowhere) text += " permanently";
  text += "?";
  const std::string them = one ? "it" : "them";
  if (to == DeleteTo::Trash) text += "\n(by sending " + them + " to the Recycle Bin)";
  if (to == DeleteTo::DeletedFolder) text += "\n(by moving " + them + " to the 'DELETED' subdirectory)";
  return {.text = text, .icon = platform::BoxIcon::Question, .buttons = platform::Buttons::YesNo};
}

inline platform::MessageBox DeleteDirectoryQuestion(const std::string& directory, catalogue::DeleteTo to) {
  const bool permanent = to == catalogue::DeleteTo::Nowhere;
  return {.text = "Are you sure you want to delete this directory with all that is in it" +
                  std::string(permanent ? " permanently" : "") + "?\n" + directory,
          .icon = platform::BoxIcon::Question,
          .buttons = platform::Buttons::YesNo};
}

inline constexpr std::string_view kSeveralDirectories =
    "These images lie in several directories.\nPlease rename those of one directory at a time.";
inline constexpr std::string_view kNoImagesDropped = "There are no images among these files.";
inline constexpr std::string_view kNewFolderTitle = "New Folder",
                                  kNewFolderPrompt = "Name of the new folder:", kRenameFolderTitle = "Rename Folder";

inline std::string RenamingImages(std::size_t count) {
  return "Renaming " + std::to_string(count) + (count == 1 ? " image" : " images");
}
inline std::string RenamePrompt(const std::string& name) { return "Rename '" + name + "' to:"; }

inline std::string ErrorSettingTimestamps(const std::vector<std::string>& paths) {
  return "Error setting timestamps" + PathLines(paths);
}

inline std::string UndoneText(const platform::JournalEntry& undone) {
  const auto files = undone.files.size() - undone.notUndoable.size();
  auto text = "Undone: " + undone.what + " (" + std::to_string(files) + (files == 1 ? " file)" : " files)");
  if (!undone.notUndoable.empty()) text += ", not undone: " + std::to_string(undone.notUndoable.size());
  return text;
}

}  // namespace ml::app
