#pragma once

#include <string>

namespace ml::app {

/// What the dialogs of the tools remember between two uses; not remembered between runs. An empty path stands for the
/// place that the directory on show suggests.
struct ToolMemory {
  std::string copyDirectory, extractDirectory, exportFile;
  std::string copySource;  ///< the file whose shooting data were copied into another
  bool overwriteJpegs = false;
};

}  // namespace ml::app
