#pragma once

#include "app/command_state.h"
#include "app/file_kinds.h"
#include "app/shooting_data_memory.h"

namespace ml::app {

class Session;

/// The image that commands for one image act on; -1 if there is none.
int TargetIndexOf(const Session& session);

/// Gathers what the rules of the commands ask for, at every change of focus, selection or tags; what it had to look
/// up in files is kept until it is told to forget.
class CommandFacts {
 public:
  /// All but what only the panes know.
  CommandState Gather(const Session& session);
  /// Of the target; null if there is none. Stays valid until the next call.
  metadata::ExifData* TargetData(const Session& session);
  /// Files came, went or changed.
  void Forget();

 private:
  void AddTargets(const Session& session, CommandState& state);
  bool TargetFromCanonEos(const Session& session);

  FileKindMemory kinds_;
  ShootingDataMemory shootingData_;
};

}  // namespace ml::app
