#pragma once

#include <string>
#include <vector>

#include "platform/interaction.h"
#include "platform/messages.h"

/// What the catalogue says to the user.
namespace ml::catalogue {

inline platform::MessageBox DirectoryDoesNotExist(const std::string& path) {
  return {"Directory does not exist:\n" + path, "Error", platform::BoxIcon::Error};
}

inline platform::MessageBox IsNotADirectory(const std::string& path) {
  return {path + platform::messages::kIsNotADirectory, "Error", platform::BoxIcon::Error};
}

inline platform::MessageBox RawNamesTooLong(const std::vector<std::string>& paths) {
  std::string text =
      "WARNING: the following Canon RAW files could not be loaded because\n"
      "their names are more than 31 characters long\n"
      "(this is a limitation of Canon's SDK):\n";
  for (const auto& path : paths) text += path + "\n";
  return {text, "Marrowlantern", platform::BoxIcon::Warning};
}

inline platform::MessageBox SaveThumbnailOrderQuestion() {
  return {
      "Do you wish to save the thumbnail order\n"
      "the Marrowlantern.dat file?\n"
      "(This has been disabled in Preferences)",
      "Marrowlantern", platform::BoxIcon::Question, platform::Buttons::YesNo};
}

inline platform::MessageBox UnableToWriteFile(const std::string& path) {
  return {"Unable to write to file:\n" + path, "Marrowlantern", platform::BoxIcon::Error};
}

inline platform::MessageBox UnableToReadFile(const std::string& path) {
  return {platform::messages::kUnableToRead + path, "Marrowlantern", platform::BoxIcon::Error};
}

inline std::string ListsDifferInSize() {
  return "CThumbnailThread::RenameFiles() srcFiles and destFiles are different sizes";
}

inline std::string DirectoriesDiffer(const std::string& source, const std::string& destination) {
  return "Source and destination directories must be the same:\n" + source + "\n" + destination;
}

inline std::string UnableToDeleteReadOnly(const std::string& path) {
  return "Unable to delete:\n" + path + "\nRead-only";
}

/// `cause`: one of the words that stand for system errors.
inline std::string ErrorDeleting(const std::string& path, const std::string& renamed, const std::string& cause) {
  return "Error deleting: " + path + "\nwhen trying to rename: " + renamed + "\nCause: " + cause;
}

inline std::string ErrorRenaming(const std::string& from, const std::string& to) {
  return "Error renaming: " + from + "\nto: " + to;
}

inline constexpr char kTransferNotDifferent[] = "Destination directory must be different from the\ncurrent directory";

inline platform::MessageBox CreateDirectoryQuestion(const std::string& path) {
  return {"Destination directory does not exist:\n" + path + "\n\nDo you want to create it?", "Marrowlantern",
          platform::BoxIcon::Question, platform::Buttons::YesNo};
}

inline std::string IsTheSameFile(const std::string& path) {
  return "Source and destination are the same file:\n" + path;
}

inline std::string DirectoryInTheWay(const std::string& path) {
  return "A directory of that name is in the way:\n" + path;
}

inline constexpr char kSaveAsTitle[] = "Save As";
inline constexpr char kDeletedForGood[] = "deleted for good";

inline std::string CopiedButNotRemoved(const std::string& path, const std::string& reason) {
  return "The file was copied, but the original could not be removed:\n" + path + "\n" + reason;
}

inline std::string VolumeInDirectory(const std::string& directory, const std::string& mountPoint) {
  return "Nothing was deleted, because a volume is mounted in:\n" + directory + "\nIt would be emptied, too:\n" +
         mountPoint;
}
inline std::string ErrorDeletingImage(const std::string& path) { return "Error deleting: " + path; }
inline std::string ExistsButIsNoDirectory(const std::string& path) {
  return "Error: " + path + "\nexists already but is not a directory";
}
inline std::string UnableToSetTimestamp(const std::string& path) {
  return "Unable to set the timestamp for file:\n" + path;
}
inline std::string ErrorMovingFile(const std::string& path, const std::string& reason) {
  return "Error moving file:\n" + path + "\n" + reason;
}

inline constexpr char kNameNotTaken[] =
    "Filename prefix must not contain any of the following characters:\n\\/:*?\"<>|";
inline constexpr char kFolderNameNotTaken[] =
    "Folder name must not contain any of the following characters:\n\\/:*?\"<>|";
inline constexpr char kExtensionChanged[] = "The file extension must not be changed";
inline std::string RawNameTooLong(const std::string& name) {
  return "Filenames for Canon RAW files must be no more than 31 characters long:\n" + name;
}
inline constexpr char kImageNameTaken[] =
    "Unable to rename image because there is already\nan image with the same name";
inline constexpr char kThmNameTaken[] =
    "Unable to rename image because there is already\na THM file with the same name";
inline constexpr char kJpegNameTaken[] =
    "Unable to rename image because there is already\na JPEG file with the same name";
inline std::string DirectoryNameTaken(const std::string& path) {
  return "Unable to rename directory because there is already\na file or directory with the same name:\n" + path;
}
inline std::string ErrorCreatingFolder(const std::string& path) { return "Error creating folder:\n" + path; }

}  // namespace ml::catalogue
