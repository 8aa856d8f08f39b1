#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "cli/run_state.h"

namespace CLI {
class App;
}

namespace ml::cli {

/// What to do with a file that is in the way; without a word from the user nothing is overwritten.
struct ExistingFileOptions {
  bool overwrite = false, skip = false, rename = false, dryRun = false;
};
/// --overwrite | --skip | --rename, and --dry-run.
void AddExistingFileOptions(CLI::App& command, ExistingFileOptions& options);

enum class WriteResult { Written, WouldWrite, Skipped, Refused };

struct OutputFile {
  std::string path;  ///< where it went, or would have gone
  WriteResult result = WriteResult::Written;
};

/// The files that one run makes in one directory.
class OutputFiles {
 public:
  /// Does not own `options` and `state`.
  OutputFiles(std::string directory, const ExistingFileOptions& options, RunState& state)
      : directory_(std::move(directory)), options_(options), state_(state) {}

  /// The place for `name`, after the options, what lies there and what was made before: no file of this run
  /// takes the place of another one. `source` is never overwritten, under whatever name. Says on standard error
  /// if it is skipped or refused.
  OutputFile Choose(std::string_view name, const std::string& source);
  /// Puts `bytes` at `output.path` if it is to be written. Throws UserError.
  void Write(const OutputFile& output, std::span<const std::byte> bytes);

 private:
  bool IsTaken(const std::string& path) const;
  std::string FreeName(const std::string& path) const;
  OutputFile Refuse(std::string path, std::string_view reason);

  std::string directory_;
  const ExistingFileOptions& options_;
  RunState& state_;
  std::unordered_set<std::string> made_;  ///< paths, also of what a dry run would have made
};

/// Whether a command may write a file to `path`; says so on standard error if not.
bool MayWrite(const std::string& path, bool overwrite, RunState& state);

}  // namespace ml::cli
