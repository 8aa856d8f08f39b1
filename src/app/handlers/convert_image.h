#pragma once

#include <string>
#include <vector>

#include "app/command_runner.h"
#include "rawconvert/batch/batch_conversion.h"

namespace ml::app {

/// Asks how the raw file at `path` is to be developed, and converts it and what else the user wants along with it.
/// What became of the files; nothing if the user cancelled. Throws UserError for a camera that is not supported.
std::vector<rawconvert::ConvertedFile> ConvertRawImage(CommandContext& context, const std::string& path);

/// Asks how the raw files `files`, one at least, are to be developed, once for all of them, and converts them as a
/// batch. What became of them; nothing if the user cancelled. Of cameras that are not supported the run itself tells.
std::vector<rawconvert::ConvertedFile> ConvertRawImages(CommandContext& context, const std::vector<std::string>& files);

}  // namespace ml::app
