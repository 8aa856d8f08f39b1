#pragma once

#include "app/command_table.h"

namespace ml::app {

/// What Enter or a double click on a thumbnail does, by the setting "ImageDclickAction" and the mode it happens in.
CommandId DoubleClickCommand(int imageDoubleClickAction, ViewMode mode);

}  // namespace ml::app
