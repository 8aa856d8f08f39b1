#include "cli/output_file.h"

#include <CLI/CLI.hpp>

#include "platform/atomic_file.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::cli {

void AddOverwriteOrSkip(CLI::App& command, ExistingFileOptions& options) {
  auto* overwrite = command.add_flag("--overwrite", options.overwrite, "Replace files that exist");
  command.add_flag("--skip", options.skip, "Leave files that exist and go on")->excludes(overwrite);
  command.add_flag("--dry-run", options.dryRun, "Only tell what would be written");
}

void AddExistingFileOptions(CLI::App& command, ExistingFileOptions& options) {
  AddOverwriteOrSkip(command, options);
  command.add_flag("--rename", options.rename, "Give the new file a free name")
      ->excludes(command.get_option("--overwrite"))
      ->excludes(command.get_option("--skip"));
}

bool OutputFiles::IsTaken(const std::string& path) const { return made_.contains(path) || platform::IsNameTaken(path); }

/// "name.png" -> "name (2).png" and so on, the first that is free.
std::string OutputFiles::FreeName(const std::string& path) const {
  const auto parts = platform::SplitPath(path);
  for (int n = 2;; ++n) {
    auto candidate = std::string(parts.directory) + std::string(parts.stem) + " (" + std::to_string(n) + ")" +
                     std::string(parts.extension);
    if (!IsTaken(candidate)) return candidate;
  }
}

OutputFile OutputFiles::Choose(std::string_view name, const std::string& source) {
  const auto wanted = platform::JoinPath(directory_, name);
  std::unique_lock guard(lock_);
  closed_.wait(guard, [&] { return !making_.contains(wanted); });
  auto output = Decide(wanted, source);
  making_.insert(wanted);
  return output;
}

OutputFile OutputFiles::Decide(const std::string& wanted, const std::string& source) const {
  const auto path = options_.rename && IsTaken(wanted) ? FreeName(wanted) : wanted;
  const auto output = [&](WriteResult result, const char* reason = "") {
    return OutputFile{.path = path, .result = result, .wanted = wanted, .note = *reason == 0 ? "" : path + reason};
  };
  if (made_.contains(path)) {
    return output(WriteResult::Refused, ": was made earlier in this run, not written; choose --rename");
  }
  if (platform::IsNameTaken(path)) {
    if (options_.skip) return output(WriteResult::Skipped, ": exists, skipped");
    if (!options_.overwrite) {
      return output(WriteResult::Refused, ": exists, not written; choose --overwrite, --skip or --rename");
    }
    if (platform::SameFile(path, source)) return output(WriteResult::Refused, ": is the source itself, not written");
  }
  return output(options_.dryRun ? WriteResult::WouldWrite : WriteResult::Written);
}

void OutputFiles::Write(const OutputFile& output, std::span<const std::byte> bytes) {
  if (output.result == WriteResult::Skipped || output.result == WriteResult::Refused) return;
  const bool written = output.result == WriteResult::Written;
  if (written) {
    // What appeared since the choice was made is not overwritten either.
    const auto existing = options_.overwrite ? platform::ExistingFile::Replace : platform::ExistingFile::Refuse;
    platform::ReplaceFile(output.path, bytes, {.existing = existing, .newFile = platform::NewFileLasts::AfterSync});
  }
  const std::lock_guard guard(lock_);
  made_.insert(output.path);
  wrote_ = wrote_ || written;
}

void OutputFiles::Close(const OutputFile& output) {
  {
    const std::lock_guard guard(lock_);
    making_.erase(output.wanted);
  }
  closed_.notify_all();
}

void OutputFiles::Settle() {
  if (wrote_) platform::SyncFileSystem(directory_);
}

bool MayWrite(const std::string& path, bool overwrite, RunState& state) {
  if (overwrite || !platform::IsNameTaken(path)) return true;
  state.Fail(path + ": exists, not written; choose --overwrite");
  return false;
}

}  // namespace ml::cli
