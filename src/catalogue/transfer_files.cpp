#include "catalogue/transfer_files.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "catalogue/messages.h"
#include "catalogue/rename_steps.h"
#include "platform/copy_file.h"
#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::catalogue {

using platform::FileExistsAnswer;
using platform::UserError;

FileTransfer::FileTransfer(TransferKind kind, std::string directory, const TransferTools& tools)
    : kind_(kind), directory_(std::move(directory)), tools_(tools) {}

FileTransfer::Way FileTransfer::Clear(const std::string& from, std::string& to) {
  while (!IsNameFree(to, tools_.fileSystem)) {
    if (platform::SameFile(from, to)) throw UserError(IsTheSameFile(to));
    struct stat status {};
    const bool isDirectory = tools_.fileSystem.Stat(to, platform::Links::Keep, status) == 0 && S_ISDIR(status.st_mode);
    if (isDirectory) throw UserError(DirectoryInTheWay(to));
    const auto answer = standing_ ? *standing_ : tools_.ask.fileExists(to);
    switch (answer) {
      case FileExistsAnswer::OverwriteAll:
      case FileExistsAnswer::SkipAll:
        standing_ = answer;
        return answer == FileExistsAnswer::SkipAll ? Way::Skip : Way::Replace;
      case FileExistsAnswer::Overwrite:
        return Way::Replace;
      case FileExistsAnswer::Skip:
        return Way::Skip;
      case FileExistsAnswer::Cancel:
        throw platform::Cancelled();
      case FileExistsAnswer::SaveAs:
        break;
    }
    const std::string extension(platform::SplitPath(to).extension);
    const auto chosen =
        tools_.ask.saveAs({.title = kSaveAsTitle, .filter = "", .defaultExtension = extension, .start = to});
    if (!chosen) throw platform::Cancelled();
    to = platform::JoinPath(directory_, std::string(platform::SplitPath(*chosen).stem) + extension);
  }
  return Way::Free;
}

std::vector<FileTransfer::Step> FileTransfer::Plan(const std::vector<std::string>& files) {
  std::vector<Step> steps;
  std::string stem(platform::SplitPath(files.front()).stem);
  for (const auto& from : files) {
    auto to = platform::JoinPath(directory_, stem + std::string(platform::SplitPath(from).extension));
    const auto way = Clear(from, to);
    const bool isImage = &from == &files.front();
    if (way == Way::Skip && isImage) return {};
    if (way == Way::Skip) continue;
    if (isImage) stem = platform::SplitPath(to).stem;
    steps.push_back({from, to});
  }
  return steps;
}

std::vector<std::string> FileTransfer::Targets(const std::vector<Step>& steps) {
  std::vector<std::string> targets;
  targets.reserve(steps.size());
  for (const auto& step : steps) targets.push_back(step.to);
  return targets;
}

std::vector<std::string> FileTransfer::Transfer(const std::string& path) {
  const auto companions = tools_.companions.Find(path);
  if (companions.file.empty()) return {};
  const auto steps = Plan(companions.Paths());
  kind_ == TransferKind::Move ? Move(steps) : Copy(steps);
  return Targets(steps);
}

std::vector<std::string> FileTransfer::Preview(const std::string& path) {
  const auto companions = tools_.companions.Find(path);
  return companions.file.empty() ? std::vector<std::string>() : Targets(Plan(companions.Paths()));
}

void FileTransfer::Move(const std::vector<Step>& steps) {
  const RenameTools tools{
      .companions = tools_.companions, .trash = tools_.trash, .batch = tools_.batch, .fileSystem = tools_.fileSystem};
  std::vector<NameChange> changes;
  changes.reserve(steps.size());
  for (const auto& step : steps) changes.push_back({step.from, step.to});
  try {
    RunChanges(changes, tools);
  } catch (const OtherFileSystem&) {
    Copy(steps);
    RemoveSources(steps);
  }
}

/// Undo brings files back from another file system too, so to it a move is a renaming like any other.
void FileTransfer::Copy(const std::vector<Step>& steps) {
  const bool move = kind_ == TransferKind::Move;
  std::vector<std::string> made;
  try {
    for (const auto& step : steps) {
      const auto& [from, to] = step;
      if (!IsNameFree(to, tools_.fileSystem)) {
        if (tools_.batch != nullptr) tools_.batch->WillTrash(to);
        tools_.trash.Put(to);
      }
      if (move && tools_.batch != nullptr) tools_.batch->WillRename(from, to);
      platform::CopyFile(from, to,
                         {.edit = {.recorder = move ? nullptr : tools_.batch,
                                   .stateDirectory = tools_.stateDirectory,
                                   .fileSystem = &tools_.fileSystem},
                          .stop = tools_.stop});
      made.push_back(to);
    }
  } catch (...) {
    for (const auto& path : made) static_cast<void>(tools_.fileSystem.Unlink(path));
    throw;
  }
}

/// The image goes last: as long as it is there, the whole can be tried again.
void FileTransfer::RemoveSources(const std::vector<Step>& steps) {
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
    if (tools_.fileSystem.Unlink(step->from) != 0)
      throw UserError(CopiedButNotRemoved(step->from, platform::ErrorText(errno)));
  }
}

std::optional<std::string> TransferDirectory(const std::string& typed, const std::string& current,
                                             platform::Interaction& ask) {
  const auto directory = platform::normaliseDirectory(platform::Trim(typed));
  if (directory.empty()) return std::nullopt;
  std::error_code error;
  const auto status = std::filesystem::status(directory, error);
  if (std::filesystem::is_directory(status)) {
    if (platform::SameFile(directory, current)) throw UserError(kTransferNotDifferent);
    return directory;
  }
  if (std::filesystem::exists(status)) throw UserError(platform::messages::kOutputIsNoDirectory + directory);
  if (ask.ask(CreateDirectoryQuestion(directory)) != platform::Button::Yes) return std::nullopt;
  platform::ensureDirectory(directory);
  return directory;
}

}  // namespace ml::catalogue
