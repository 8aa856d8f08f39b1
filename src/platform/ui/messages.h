#pragma once

#include <string>

/// The texts of this folder's boxes.
namespace ml::platform::ui {

inline constexpr auto kFileExistsCaption = "File Exists";

inline std::string FileExistsQuestion(const std::string& path) {
  return "Output file exists:\n" + path +
         "\n\nDo you wish to skip this file, overwrite the existing file\nor specify a new filename?";
}

}  // namespace ml::platform::ui
