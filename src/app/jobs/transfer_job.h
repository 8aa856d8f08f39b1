#pragma once

#include <string>
#include <vector>

#include "app/command_runner.h"
#include "app/jobs/image_job.h"
#include "catalogue/transfer_files.h"

namespace ml::app {

/// The job, and then list and tree brought up to date, whatever came of it. Throws what the job threw.
void RunRemoving(CommandContext& context, const ImageJob& job);

/// Copies or moves images to `directory`, which exists, with questions and progress. Throws UserError.
void RunTransfer(CommandContext& context, catalogue::TransferKind kind, const std::string& directory,
                 const std::vector<std::string>& paths);

/// Files were dropped onto a directory: those that are images go there, with their companions. Throws UserError.
void TransferDropped(CommandContext& context, catalogue::TransferKind kind, const std::string& directory,
                     const std::vector<std::string>& files);

}  // namespace ml::app
