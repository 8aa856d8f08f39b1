#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/data_folders.h"
#include "platform/file_system.h"
#include "platform/trash.h"

namespace ml::platform {

/// Where a journal lies and what it works with; all of it must outlive the journal.
struct JournalHost {
  Trash& trash;
  const Clock& clock;
  std::string stateDirectory = userStateDir();
  FileSystem& fileSystem = RealFileSystem();
};

/// A file, or a link itself, that got another name.
struct JournalRename {
  std::string from, to;
};

struct JournalEntry {
  std::string id;
  std::string what;  ///< the command, as the user knows it
  std::time_t when = 0;
  std::vector<std::string> files;        ///< full paths as they were before
  std::vector<std::string> notUndoable;  ///< those of them that stay as they are
  std::vector<JournalRename> renames;    ///< in their order, also of files that bore a name for a moment only
};

/// Keeps how the latest batches of edits are taken back, across crashes and for all programs of this user.
/// It never does anything by itself. Use from one thread at a time; several processes may share it.
class EditJournal {
 public:
  explicit EditJournal(const JournalHost& host) : host_(host) {}

  /// Latest first; damaged batches are left out. Throws UserError if the journal cannot be read at all.
  std::vector<JournalEntry> List() const;
  /// Takes back the latest batch, after checking that nothing else has changed its files since. Throws
  /// UserError with nothing changed if something has, or if there is nothing that can be undone (a batch of
  /// which nothing can be undone leaves the journal, so that the next call reaches the one before). Throws
  /// UserError also if a step fails half-way: then another call goes on.
  /// Returns what was taken back; of its files only those in `notUndoable` are not as before.
  JournalEntry Undo();

  const JournalHost& Host() const noexcept { return host_; }

 private:
  JournalHost host_;
};

}  // namespace ml::platform
