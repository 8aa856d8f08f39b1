#pragma once

#include <memory>

#include "platform/clock.h"
#include "platform/edit_journal.h"
#include "platform/trash.h"

namespace ml::platform {

/// The journal of this user's edits with the trash and clock that it needs; one a program.
class UserJournal {
 public:
  Trash& Bin() { return *trash_; }
  EditJournal& Edits() { return journal_; }

 private:
  const std::unique_ptr<Trash> trash_ = MakeSystemTrash();
  const SystemClock clock_;
  EditJournal journal_{{.trash = *trash_, .clock = clock_}};
};

}  // namespace ml::platform
