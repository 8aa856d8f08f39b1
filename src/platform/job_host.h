#pragma once

#include "platform/clock.h"
#include "platform/interaction.h"
#include "platform/progress.h"

namespace ml::platform {

/// What a job may ask of the world: the job window, the options of the command line, or a test's script.
/// The job does not own it and runs on another thread than whoever does.
struct JobHost {
  Interaction& ask;
  Progress& progress;
  const Clock& clock;
};

}  // namespace ml::platform
