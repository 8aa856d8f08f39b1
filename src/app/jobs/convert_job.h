#pragma once

#include <vector>

#include "app/command_runner.h"
#include "rawconvert/batch/batch_conversion.h"

namespace ml::app {

/// Converts with the worker standing still, with a window that tells how far it is; then brings list and tree up to
/// date. `settings` have their development parameters. What became of the files, as far as the run came. Throws nothing
/// of the run: it shows its own boxes.
std::vector<rawconvert::ConvertedFile> RunConversion(CommandContext& context, const rawconvert::BatchConversion& batch,
                                                     rawconvert::RawConversionSettings settings);

}  // namespace ml::app
