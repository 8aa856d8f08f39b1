#pragma once

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace ml::app {

/// Why a name cannot be taken, a sentence; nothing if it can.
using RefuseName = std::function<std::optional<std::string>(const std::string& name)>;

/// Tells over a dialog why what was typed there cannot be taken.
void TellRefusal(QWidget& dialog, const std::string& sentence);

}  // namespace ml::app
