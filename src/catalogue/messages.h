#pragma once

#include <string>
#include <vector>

#include "platform/interaction.h"

/// What the catalogue says to the user.
namespace ml::catalogue {

inline platform::MessageBox directoryDoesNotExist(const std::string& path) {
  return {"Directory does not exist:\n" + path, "Error", platform::BoxIcon::Error};
}

inline platform::MessageBox isNotADirectory(const std::string& path) {
  return {path + "\nis not a directory", "Error", platform::BoxIcon::Error};
}

inline platform::MessageBox rawNamesTooLong(const std::vector<std::string>& paths) {
  std::string text =
      "WARNING: the following Canon RAW files could not be loaded because\n"
      "their names are more than 31 characters long\n"
      "(this is a limitation of Canon's SDK):\n";
  for (const auto& path : paths) text += path + "\n";
  return {text, "Marrowlantern", platform::BoxIcon::Warning};
}

inline platform::MessageBox saveThumbnailOrder() {
  return {
      "Do you wish to save the thumbnail order\n"
      "the Marrowlantern.dat file?\n"
      "(This has been disabled in Preferences)",
      "Marrowlantern", platform::BoxIcon::Question, platform::Buttons::YesNo};
}

inline platform::MessageBox unableToWriteFile(const std::string& path) {
  return {"Unable to write to file:\n" + path, "Marrowlantern", platform::BoxIcon::Error};
}

inline platform::MessageBox unableToReadFile(const std::string& path) {
  return {"Unable to read file:\n" + path, "Marrowlantern", platform::BoxIcon::Error};
}

inline std::string listsDifferInSize() {
  return "CThumbnailThread::RenameFiles() srcFiles and destFiles are different sizes";
}

inline std::string directoriesDiffer(const std::string& source, const std::string& destination) {
  return "Source and destination directories must be the same:\n" + source + "\n" + destination;
}

inline std::string unableToDeleteReadOnly(const std::string& path) {
  return "Unable to delete:\n" + path + "\nRead-only";
}

/// `cause`: one of the words that stand for system errors.
inline std::string errorDeleting(const std::string& path, const std::string& renamed, const std::string& cause) {
  return "Error deleting: " + path + "\nwhen trying to rename: " + renamed + "\nCause: " + cause;
}

inline std::string errorRenaming(const std::string& from, const std::string& to) {
  return "Error renaming: " + from + "\nto: " + to;
}

}  // namespace ml::catalogue
