#pragma once

#include <span>
#include <string>
#include <vector>

namespace ml::app {

/// What the names on the command line ask for: a directory, or else exactly these files, or nothing.
struct StartFiles {
  std::string directory;
  std::vector<std::string> files;
  std::vector<std::string> missing;  ///< names that lead to nothing
};

/// Looks at `tokens` in turn; relative ones count from the working directory. A directory ends the scan and
/// the files before it are forgotten; names that lead to nothing, and kinds of image that are only shown as part
/// of a directory, are passed over. A ".thm" stands for its ".crw", the viewing JPEG of an EOS-1D raw file for
/// that file (where `bindJpegToEos1DRaw` is set).
StartFiles CollectStartFiles(std::span<const std::string> tokens, bool bindJpegToEos1DRaw);

}  // namespace ml::app
