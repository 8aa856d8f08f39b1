#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/errors.h"

namespace ml::platform {

enum class StartFailure { NotFound, TooManyArguments, NotExecutable, NoMemory, Other };

/// A program that could not be started.
class StartError : public UserError {
 public:
  StartError(const std::string& sentence, StartFailure failure, std::string reason)
      : UserError(sentence), failure_(failure), reason_(std::move(reason)) {}
  StartFailure Failure() const noexcept { return failure_; }
  /// In the words of the system.
  const std::string& Reason() const noexcept { return reason_; }

 private:
  StartFailure failure_;
  std::string reason_;
};

/// Starts another program, which lives on by itself: `command` is its name, looked for in the path, and its arguments
/// as they stand, in whatever bytes. No shell has a hand in it. Throws StartError.
void StartProgram(const std::vector<std::string>& command);

/// Hands a file or directory (full path) to the program that the desktop has for it. Throws StartError.
inline void OpenByDesktop(const std::string& path) { StartProgram({"xdg-open", path}); }

/// Program and arguments of a line as users type it, at least one word. The program stands between double quotes; or it
/// is the whole line, if there is such a program; or it ends behind ".exe"; or else at the first blank. Blanks separate
/// what follows. Throws UserError for quotes that do not end or hold less than three characters.
std::vector<std::string> SplitProgramLine(std::string_view line);

}  // namespace ml::platform
