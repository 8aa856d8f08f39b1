#pragma once

#include <string>

#include "app/command_runner.h"
#include "imaging/pixel_buffer.h"

class QWidget;

namespace ml::app {

/// Turns one image as the commands for rotating do, with boxes and progress over a window that covers the main one,
/// whose picture is left as it is. Throws UserError.
void TurnImage(CommandContext& context, const std::string& path, imaging::Turn turn, QWidget& over);

}  // namespace ml::app
