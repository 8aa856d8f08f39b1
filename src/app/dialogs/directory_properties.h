#pragma once

#include <string>

class QWidget;

namespace ml::app {

/// Shows what a directory holds, counted while it shows, the room left beside it, and its dates.
void ShowDirectoryProperties(QWidget& parent, const std::string& directory);

}  // namespace ml::app
