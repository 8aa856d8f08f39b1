#pragma once

#include <set>
#include <string>

namespace ml::app {

/// What the dialogs of the tools remember between two uses. An empty path stands for the place that the directory on
/// show suggests.
struct ToolMemory {
  std::string copyDirectory, extractDirectory, exportFile;
  std::string copySource;  ///< the file whose shooting data were copied into another
  bool overwriteJpegs = false;
};

/// What the window remembers while it runs; every run begins anew.
struct RunMemory {
  bool blackAndWhite = false;
  bool statusBarShown = true;
  bool histogramShown = false;     ///< in a window of its own
  bool shootingDataShown = false;  ///< in a window of its own
  std::string lastDestination;     ///< of images copied or moved
  ToolMemory tools;
  int preferencesPage = 0;                  ///< where the Preferences open
  int iptcPage = 0;                         ///< where the sheet of IPTC data opens
  std::set<std::string> viewingJpegsTried;  ///< raw files
};

}  // namespace ml::app
