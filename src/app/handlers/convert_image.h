#pragma once

#include <string>
#include <vector>

#include "app/command_runner.h"
#include "rawconvert/batch/batch_conversion.h"

namespace ml::app {

/// Asks how the raw file at `path` is to be developed, and converts it and what else the user wants along with it.
/// What became of the files; nothing if the user cancelled. Throws UserError for a camera that is not supported.
std::vector<rawconvert::ConvertedFile> ConvertRawImage(CommandContext& context, const std::string& path);

}  // namespace ml::app
