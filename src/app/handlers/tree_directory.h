#pragma once

#include "app/command_runner.h"
#include "catalogue/delete_files.h"

namespace ml::app {

/// Asks, deletes the directory chosen in the tree and shows the one above if it was on show. Throws UserError.
void DeleteTreeDirectory(CommandContext& context, catalogue::DeleteTo to);

}  // namespace ml::app
