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

}  // namespace ml::catalogue
