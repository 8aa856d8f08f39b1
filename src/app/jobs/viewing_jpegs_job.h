#pragma once

#include "app/command_runner.h"

namespace ml::app {

/// Where the settings want it, makes the viewing JPEGs that EOS-1D raw files of the list lack. Each file is tried once
/// in a run of the program; those that fail are told in one box. Does nothing while a dialog is open.
void MakeMissingViewingJpegs(CommandContext& context);

}  // namespace ml::app
