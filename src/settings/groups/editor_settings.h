#pragma once

#include <string>

namespace ml::settings {

/// The outside editor.
struct EditorSettings {
  int shellOpenEditor = 1;        ///< use the program that the desktop names
  std::string openEditorCmdLine;  ///< program with its arguments
  int editorSupportsRaw = 0;
  int allowMultiEdit = 0;
};

}  // namespace ml::settings
