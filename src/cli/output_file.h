#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

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

/// The place for `name` in `directory`, after `options` and what lies there. `source` is never overwritten,
/// under whatever name. Says on standard error if it is skipped or refused.
OutputFile ChooseOutput(const std::string& directory, std::string_view name, const std::string& source,
                        const ExistingFileOptions& options, RunState& state);
/// Puts `bytes` at `output.path` if it is to be written. Throws UserError.
void WriteOutput(const OutputFile& output, std::span<const std::byte> bytes, const ExistingFileOptions& options);

}  // namespace ml::cli
