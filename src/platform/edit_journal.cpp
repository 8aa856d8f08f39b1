#include "platform/edit_journal.h"

#include <fcntl.h>

#include <set>
#include <span>
#include <utility>

#include "platform/errors.h"
#include "platform/journal_files.h"
#include "platform/messages.h"
#include "platform/text.h"
#include "platform/undo.h"

namespace ml::platform {

namespace {

JournalEntry Describe(const std::string& id, const EditLog& log) {
  JournalEntry entry{.id = id,
                     .what = log.what,
                     .when = static_cast<std::time_t>(log.when),
                     .files = {},
                     .notUndoable = {},
                     .renames = {}};
  std::set<std::string> files, notUndoable;
  for (const auto& step : log.steps) {
    if (files.insert(step.path).second) entry.files.push_back(step.path);
    if (step.kind == EditKind::Rename) entry.renames.push_back({step.path, step.other});
    if (step.kind == EditKind::Lost && notUndoable.insert(step.path).second) entry.notUndoable.push_back(step.path);
  }
  return entry;
}

/// Notes how far an undo came: a chain of renames tells it only half. Undoing needs no room on the disk, so a
/// note that finds none is left out, and the next undo relies on the files alone.
void Note(OpenFile& file, EditLog& log, const std::string& line) {
  try {
    file.Write(log.size, AsBytes(line));
    log.size += line.size();
  } catch (const UserError&) {
    return;
  }
}

}  // namespace

std::vector<JournalEntry> EditJournal::List() const {
  std::vector<JournalEntry> entries;
  const auto directory = JournalDirectory(host_.stateDirectory);
  for (const auto& id : ListBatches(host_.fileSystem, directory)) {
    try {
      const auto log = LoadBatch(OpenRegular(host_.fileSystem, LogPath(directory, id), O_RDONLY));
      if (log && !log->steps.empty()) entries.push_back(Describe(id, *log));
    } catch (const UserError&) {
      continue;  // taken back by another process since it was listed
    }
  }
  return entries;
}

JournalEntry EditJournal::Undo() {
  auto& fileSystem = host_.fileSystem;
  const auto directory = JournalDirectory(host_.stateDirectory);
  for (const auto& id : ListBatches(fileSystem, directory)) {
    const auto path = LogPath(directory, id);
    auto file = OpenRegular(fileSystem, path, O_RDWR);
    auto log = LoadBatch(file);
    if (!file.TryLock()) throw UserError(messages::kStillRunning + (log ? log->what : std::string()));
    if (!log || log->steps.empty()) {  // cut off before anything was edited
      RemoveBatch(fileSystem, directory, id);
      continue;
    }
    auto entry = Describe(id, *log);
    if (entry.files.size() == entry.notUndoable.size()) {
      RemoveBatch(fileSystem, directory, id);
      throw UserError(messages::kNotUndoable + log->what);
    }
    UndoSteps(*log, {.fileSystem = fileSystem,
                     .trash = host_.trash,
                     .stateDirectory = host_.stateDirectory,
                     .storePath = StorePathOf(path),
                     .begin = [&] { Note(file, *log, UndoingLine()); },
                     .undone = [&](std::size_t index) { Note(file, *log, UndoneLine(index)); }});
    RemoveBatch(fileSystem, directory, id);
    return entry;
  }
  throw UserError(messages::kNothingToUndo);
}

}  // namespace ml::platform
