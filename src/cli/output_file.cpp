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

}  // namespace

void AddExistingFileOptions(CLI::App& command, ExistingFileOptions& options) {
  auto* overwrite = command.add_flag("--overwrite", options.overwrite, "Replace files that exist");
  auto* skip = command.add_flag("--skip", options.skip, "Leave files that exist and go on");
  auto* rename = command.add_flag("--rename", options.rename, "Give the new file a free name");
  overwrite->excludes(skip)->excludes(rename);
  skip->excludes(rename);
  command.add_flag("--dry-run", options.dryRun, "Only tell what would be written");
}

bool OutputFiles::IsTaken(const std::string& path) const { return made_.contains(path) || Exists(path); }

/// "name.png" -> "name (2).png" and so on, the first that is free.
std::string OutputFiles::FreeName(const std::string& path) const {
  const auto parts = platform::SplitPath(path);
  for (int n = 2;; ++n) {
    auto candidate = std::string(parts.directory) + std::string(parts.stem) + " (" + std::to_string(n) + ")" +
                     std::string(parts.extension);
    if (!IsTaken(candidate)) return candidate;
  }
}

OutputFile OutputFiles::Refuse(std::string path, std::string_view reason) {
  state_.Fail(path + std::string(reason));
  return {std::move(path), WriteResult::Refused};
}

OutputFile OutputFiles::Choose(std::string_view name, const std::string& source) {
  auto path = platform::JoinPath(directory_, name);
  if (options_.rename && IsTaken(path)) path = FreeName(path);
  if (made_.contains(path)) return Refuse(path, ": was made earlier in this run, not written; choose --rename");
  if (Exists(path)) {
    if (options_.skip) {
      Complain(path + ": exists, skipped");
      return {path, WriteResult::Skipped};
    }
    if (!options_.overwrite) return Refuse(path, ": exists, not written; choose --overwrite, --skip or --rename");
    if (platform::SameFile(path, source)) return Refuse(path, ": is the source itself, not written");
  }
  return {path, options_.dryRun ? WriteResult::WouldWrite : WriteResult::Written};
}

void OutputFiles::Write(const OutputFile& output, std::span<const std::byte> bytes) {
  if (output.result == WriteResult::Skipped || output.result == WriteResult::Refused) return;
  made_.insert(output.path);
  if (output.result == WriteResult::WouldWrite) return;
  // What appeared since the choice was made is not overwritten either.
  const auto existing = options_.overwrite ? platform::ExistingFile::Replace : platform::ExistingFile::Refuse;
  platform::ReplaceFile(output.path, bytes, {.existing = existing});
}

bool MayWrite(const std::string& path, bool overwrite, RunState& state) {
  if (overwrite || !Exists(path)) return true;
  state.Fail(path + ": exists, not written; choose --overwrite");
  return false;
}

}  // namespace ml::cli
