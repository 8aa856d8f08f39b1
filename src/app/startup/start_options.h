#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/interaction.h"

namespace ml::app {

/// What the options say.
struct StartOptions {
  bool usageRequested = false;  ///< show the usage box and end; nothing else counts
  int cpuPreference = -1;       ///< of "-a", 0..31; -1 if it was not given
  std::string scriptPath;       ///< of "-s"; accepted for old shortcuts, no script is ever run
};

/// The options in front of a command line given as one string, and what stands behind them. The program itself has its
/// arguments one by one and uses ScanArguments.
struct StartLine {
  StartOptions options;
  std::string rest;  ///< for ScanTokens; empty: no names were given
};
/// Letters in either case, "/" as good as "-".
StartLine ScanCommandLine(std::string_view commandLine);

/// The names in `rest`, blanks between them, each optionally in double quotes. An empty token, and so a quote
/// that is never closed, ends the scan.
std::vector<std::string> ScanTokens(std::string_view rest);

/// The options in front of a program's arguments, and the names behind them.
struct StartArguments {
  StartOptions options;
  std::vector<std::string> tokens;  ///< full paths, one for each argument from the first that is no option on
};
/// `arguments` without the program's own name. Only "-" begins an option; "/a", "/a" with digits, and "/s" do
/// so unless there is a file of that name. "-s" takes the next argument where nothing stands behind its letter.
StartArguments ScanArguments(std::span<const char* const> arguments,
                             const std::function<bool(const std::string&)>& fileExists);

/// The box that tells of a script that does not exist; the options then name none any more. Nothing if there is
/// nothing to tell.
std::optional<platform::MessageBox> CheckScript(StartOptions& options,
                                                const std::function<bool(const std::string&)>& fileExists);

}  // namespace ml::app
