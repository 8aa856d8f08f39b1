#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/interaction.h"

namespace ml::app {

enum class ProcessorStep {
  Skip,           ///< the way to leave the process unpinned, told in a box
  Nothing,        ///< no processor to choose from
  AlreadySingle,  ///< the process has one processor only
  Pin
};

struct ProcessorChoice {
  ProcessorStep step = ProcessorStep::Nothing;
  int cpu = -1;  ///< of Pin
};

/// Which processor the process should run on. `cpuPreference` is -1 (none) to 31; bit n of `processMask` is set
/// if the process may run on processor n, and 0 stands for a mask that could not be read.
ProcessorChoice ChooseProcessor(int cpuPreference, std::uint64_t processMask);

/// The calls of the system, replaced in tests.
struct AffinityCalls {
  std::function<std::uint64_t()> processMask;  ///< of the first 64 processors; 0 on failure
  std::function<int(int cpu)> pin;             ///< 0, or the error number
};
AffinityCalls SystemAffinity();

/// Pins the calling thread, and so those it starts later, as ChooseProcessor() says; without a preference the
/// process is left alone. Call it before any other thread exists. Returns the box to show, if any.
std::optional<platform::MessageBox> ApplyProcessor(int cpuPreference, const AffinityCalls& calls);

}  // namespace ml::app
