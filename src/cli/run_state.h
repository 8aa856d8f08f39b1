#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "platform/errors.h"
#include "settings/settings.h"

namespace ml::cli {

/// The exit codes of the program.
enum class ExitCode { Ok = 0, SomeFailed = 1, WrongUsage = 2, Cancelled = 130 };

/// A value of an option that only the command itself could judge.
class WrongUsage : public platform::UserError {
 public:
  using UserError::UserError;
};

/// What one run of a command shares: the options that every command knows, and what becomes of it.
struct RunState {
  bool json = false;
  bool noSettings = false;
  std::vector<std::string> overrides;  ///< "KEY=VALUE" of --setting
  settings::Settings settings;         ///< after --no-settings and --setting
  std::function<void()> action;        ///< what the command line asked for
  std::stop_token stop;                ///< Ctrl+C
  bool failed = false;                 ///< some file failed or a question stayed open

  /// Whether --setting names this setting.
  bool Told(std::string_view key) const;
  /// Tells of a file that failed and goes on.
  void Fail(std::string_view sentence);
};

}  // namespace ml::cli
