#include "cli/output_file.h"

#include <CLI/CLI.hpp>
#include <filesystem>

#include "cli/output.h"
#include "platform/atomic_file.h"
#include "platform/paths.h"

namespace ml::cli {

namespace {

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

/// "name.png" -> "name (2).png" and so on, the first that is free.
std::string FreeName(const std::string& path) {
  const auto parts = platform::SplitPath(path);
  for (int n = 2;; ++n) {
    auto candidate = std::string(parts.directory) + std::string(parts.stem) + " (" + std::to_string(n) + ")" +
                     std::string(parts.extension);
    if (!Exists(candidate)) return candidate;
  }
}

}  // namespace

void AddExistingFileOptions(CLI::App& command, ExistingFileOptions& options) {
  auto* overwrite = command.add_flag("--overwrite", options.overwrite, "Replace files that exist");
  auto* skip = command.add_flag("--skip", options.skip, "Leave files that exist and go on");
  auto* rename = command.add_flag("--rename", options.rename, "Give the new file a free name");
  overwrite->excludes(skip)->excludes(rename);
  skip->excludes(rename);
  command.add_flag("--dry-run", options.dryRun, "Only tell what would be written");
}

OutputFile ChooseOutput(const std::string& directory, std::string_view name, const std::string& source,
                        const ExistingFileOptions& options, RunState& state) {
  OutputFile output{platform::JoinPath(directory, name),
                    options.dryRun ? WriteResult::WouldWrite : WriteResult::Written};
  if (!Exists(output.path)) return output;
  if (options.rename) {
    output.path = FreeName(output.path);
  } else if (options.skip) {
    Complain(output.path + ": exists, skipped");
    output.result = WriteResult::Skipped;
  } else if (!options.overwrite || platform::SameFile(output.path, source)) {
    state.Fail(output.path + (options.overwrite ? ": is the source itself, not written"
                                                : ": exists, not written; choose --overwrite, --skip or --rename"));
    output.result = WriteResult::Refused;
  }
  return output;
}

void WriteOutput(const OutputFile& output, std::span<const std::byte> bytes, const ExistingFileOptions& options) {
  if (output.result != WriteResult::Written) return;
  // What appeared since the choice was made is not overwritten either.
  const auto existing = options.overwrite ? platform::ExistingFile::Replace : platform::ExistingFile::Refuse;
  platform::ReplaceFile(output.path, bytes, {.existing = existing});
}

}  // namespace ml::cli
