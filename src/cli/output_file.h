#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
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
/// --overwrite | --skip, and --dry-run.
void AddOverwriteOrSkip(CLI::App& command, ExistingFileOptions& options);
/// These and --rename.
void AddExistingFileOptions(CLI::App& command, ExistingFileOptions& options);

enum class WriteResult { Written, WouldWrite, Skipped, Refused };

struct OutputFile {
  std::string path;  ///< where it went, or would have gone
  WriteResult result = WriteResult::Written;
  std::string wanted;  ///< where it would go if nothing were in the way
  std::string note;    ///< why it is skipped or refused
};

/// The files that one run makes in one directory. Safe to use from several threads at once.
class OutputFiles {
 public:
  /// Does not own `options`.
  OutputFiles(std::string directory, const ExistingFileOptions& options)
      : directory_(std::move(directory)), options_(options) {}

  /// The place for `name`, after the options, what lies there and what was made before: no file of this run
  /// takes the place of another one. `source` is never overwritten, under whatever name. Waits while a file of the
  /// same name is still being made. Calls must come in the order of the run, and each be followed by Close().
  OutputFile Choose(std::string_view name, const std::string& source);
  /// Puts `bytes` at `output.path` if it is to be written. Throws UserError.
  void Write(const OutputFile& output, std::span<const std::byte> bytes);
  /// The file is made, or will not be.
  void Close(const OutputFile& output);
  /// Makes all of them lasting; to be called at the end, whatever became of the run. Throws UserError.
  void Settle();

 private:
  bool IsTaken(const std::string& path) const;
  std::string FreeName(const std::string& path) const;
  OutputFile Decide(const std::string& wanted, const std::string& source) const;

  std::string directory_;
  const ExistingFileOptions& options_;
  std::mutex lock_;  ///< guards the rest
  std::condition_variable closed_;
  std::unordered_set<std::string> making_;  ///< wanted paths that are chosen and not closed
  std::unordered_set<std::string> made_;    ///< paths, also of what a dry run would have made
  bool wrote_ = false;
};

/// Whether a command may write a file to `path`; says so on standard error if not.
bool MayWrite(const std::string& path, bool overwrite, RunState& state);

}  // namespace ml::cli
