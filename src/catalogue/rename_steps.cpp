#include "catalogue/rename_steps.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>

#include "catalogue/messages.h"
#include "platform/errors.h"
#include "platform/file_status.h"
#include "platform/paths.h"

namespace ml::catalogue {

namespace {

using platform::FileSystem;
using platform::Links;
using platform::UserError;

std::string CauseWord(int error) {
  switch (error) {
    case 0:
      return "none";
    case ENOENT:
      return "fileNotFound";
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
      return "badPath";
    case EMFILE:
    case ENFILE:
      return "tooManyOpenFiles";
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return "accessDenied";
    case ENOSPC:
    case EDQUOT:
      return "diskFull";
    default:
      return "generic";
  }
}

/// Whether the directory holds both names, so that they cannot be two spellings of one.
bool AreBothListed(const NameChange& change, FileSystem& fileSystem) {
  std::vector<std::string> names;
  const auto directory = platform::DirectoryOf(change.to);
  if (fileSystem.List(directory.empty() ? "." : std::string(directory), names) != 0) return false;
  return std::ranges::count(names, platform::FileName(change.from)) > 0 &&
         std::ranges::count(names, platform::FileName(change.to)) > 0;
}

/// The path with all letters of its name in the other case; the same if it has none.
std::string OtherCase(const std::string& path) {
  const std::string name(platform::FileName(path));
  const auto lower = platform::AsciiLower(name);
  return std::string(platform::DirectoryOf(path)) + (lower == name ? platform::AsciiUpper(name) : lower);
}

/// Throws if what lies at `now` and will stand at the new name must stay there.
void CheckDisplaced(const NameChange& change, const std::string& now, FileSystem& fileSystem) {
  struct stat status {};
  if (fileSystem.Stat(now, Links::Keep, status) != 0) throw UserError(ErrorRenaming(change.from, change.to));
  if (S_ISDIR(status.st_mode)) throw UserError(ErrorDeleting(change.to, change.from, CauseWord(EISDIR)));
  if (S_ISLNK(status.st_mode)) return;
  platform::FileStatusGuard guard(now, platform::ModificationTimePolicy::LetStand, fileSystem);
  if (!guard.MakeWritable()) throw UserError(UnableToDeleteReadOnly(change.to));
  guard.Restore();
}

void Displace(const NameChange& change, const RenameTools& tools) {
  try {
    tools.trash.Put(platform::AbsolutePath(change.to));
  } catch (const UserError&) {
    const std::string directory(platform::DirectoryOf(change.to));
    const int error = tools.fileSystem.Access(directory.empty() ? "." : directory, W_OK) == 0 ? EIO : errno;
    throw UserError(ErrorDeleting(change.to, change.from, CauseWord(error)));
  }
}

int Rename(const RenameStep& step, const NameChange& change, FileSystem& fileSystem) {
  // Whatever appeared at the new name since is not overwritten.
  return step.kind == RenameStep::Kind::RenameInPlace ? fileSystem.Rename(change.from, change.to)
                                                      : fileSystem.RenameNoReplace(change.from, change.to);
}

void Do(const RenameStep& step, const RenameTools& tools) {
  const auto& change = step.change;
  if (step.kind == RenameStep::Kind::Displace) return Displace(change, tools);
  if (Rename(step, change, tools.fileSystem) != 0) {
    if (errno == EXDEV) throw OtherFileSystem(ErrorRenaming(change.from, change.to));
    throw UserError(ErrorRenaming(change.from, change.to));
  }
  if (tools.renamed) tools.renamed(change.from, change.to);
}

struct TakenBack {
  bool complete = true;
  std::optional<NameChange> stuck = std::nullopt;  ///< a file that could not have its old name back
};

/// Takes the first `count` steps back, as far as it goes.
TakenBack TakeBack(const std::vector<RenameStep>& steps, std::size_t count, const RenameTools& tools) {
  TakenBack result;
  while (count-- > 0) {
    const auto& step = steps[count];
    if (tools.progress) tools.progress(count, steps.size());
    const NameChange back{step.change.to, step.change.from};
    const bool displaced = step.kind == RenameStep::Kind::Displace;
    const bool done = !displaced && Rename(step, back, tools.fileSystem) == 0;
    if (done && tools.renamed) tools.renamed(back.from, back.to);
    if (!done && !displaced) result.stuck = back;
    result.complete = result.complete && done;
  }
  return result;
}

std::vector<platform::PlannedMove> MovesOf(const std::vector<RenameStep>& steps) {
  std::vector<platform::PlannedMove> moves;
  moves.reserve(steps.size());
  for (const auto& step : steps) {
    const bool displaced = step.kind == RenameStep::Kind::Displace;
    moves.push_back({displaced ? step.change.to : step.change.from, displaced ? "" : step.change.to, step.now});
  }
  return moves;
}

}  // namespace

/// Learns whether the directory of `path`, where that file lies, takes two spellings for one.
void StepPlanner::LearnCase(const std::string& path) {
  const std::string directory(platform::DirectoryOf(path));
  if (ignoresCase_.contains(directory)) return;
  const NameChange spellings{path, OtherCase(path)};
  if (spellings.from == spellings.to) return;
  struct stat own {};
  struct stat other {};
  const bool same = fileSystem_.Stat(spellings.from, Links::Keep, own) == 0 &&
                    fileSystem_.Stat(spellings.to, Links::Keep, other) == 0 && own.st_ino == other.st_ino &&
                    own.st_dev == other.st_dev;
  ignoresCase_[directory] = same && !AreBothListed(spellings, fileSystem_);
}

std::string StepPlanner::Key(const std::string& path) const {
  const std::string directory(platform::DirectoryOf(path));
  const auto found = ignoresCase_.find(directory);
  const bool ignores = found != ignoresCase_.end() && found->second;
  return ignores ? directory + platform::nameFold(platform::FileName(path)) : path;
}

/// Where the file lies that bears the name by then; empty if there is none.
std::string StepPlanner::Now(const std::string& path, const NameChange& asker) {
  if (const auto found = now_.find(Key(path)); found != now_.end()) return found->second;
  struct stat status {};
  if (fileSystem_.Stat(path, Links::Keep, status) == 0) return path;
  if (errno != ENOENT) throw UserError(ErrorRenaming(asker.from, asker.to));
  return {};
}

void StepPlanner::Add(const NameChange& change) {
  if (change.from == change.to) return;
  const auto now = Now(change.from, change);
  if (now.empty()) throw UserError(ErrorRenaming(change.from, change.to));
  LearnCase(now);
  const bool inPlace = Key(change.from) == Key(change.to);
  if (const auto other = inPlace ? std::string() : Now(change.to, change); !other.empty()) {
    CheckDisplaced(change, other, fileSystem_);
    steps_.push_back({RenameStep::Kind::Displace, change, other});
  }
  steps_.push_back({inPlace ? RenameStep::Kind::RenameInPlace : RenameStep::Kind::Rename, change, now});
  now_[Key(change.from)].clear();
  now_[Key(change.to)] = now;
}

bool StepPlanner::IsFree(const std::string& path) {
  const auto found = now_.find(Key(path));
  return found != now_.end() ? found->second.empty() : IsNameFree(path, fileSystem_);
}

void RunSteps(const std::vector<RenameStep>& steps, NotedPlan noted, const RenameTools& tools) {
  platform::EditBatch::Mark before;
  if (tools.batch != nullptr) before = tools.batch->WillMoveAll(MovesOf(steps));
  const bool isNoted = tools.batch == nullptr || !tools.batch->Failure();
  if (!isNoted && noted == NotedPlan::Required) throw UserError(*tools.batch->Failure());
  std::size_t done = 0;
  const auto takeBack = [&] {
    auto result = TakeBack(steps, done, tools);
    if (result.complete && tools.batch != nullptr) tools.batch->Forget(before);
    return result;
  };
  try {
    for (const auto& step : steps) {
      if (tools.stop.stop_requested()) throw platform::Cancelled();
      if (tools.progress) tools.progress(done, steps.size());
      Do(step, tools);
      ++done;
    }
  } catch (const platform::Cancelled&) {
    const auto stuck = takeBack().stuck;
    if (stuck) throw UserError(ErrorRenaming(stuck->from, stuck->to));  // else nobody would hear of it
    throw;
  } catch (...) {
    takeBack();
    throw;
  }
}

void RunChanges(const std::vector<NameChange>& changes, const RenameTools& tools) {
  StepPlanner planner(tools.fileSystem);
  for (const auto& change : changes) planner.Add(change);
  RunSteps(planner.Steps(), NotedPlan::IfPossible, tools);
}

bool IsNameFree(const std::string& path, FileSystem& fileSystem) {
  struct stat status {};
  return fileSystem.Stat(path, Links::Keep, status) != 0 && errno == ENOENT;
}

}  // namespace ml::catalogue
