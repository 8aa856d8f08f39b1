#pragma once

#include <optional>
#include <string>

#include "app/dialogs/refusal_box.h"

class QWidget;

namespace ml::app {

/// Asks for another name of a file, stem and extension in a line each. `refuse` gives the sentence why a name cannot be
/// taken; the dialog shows it and stays open. Bytes that are not UTF-8 survive where the line is not edited. Nothing if
/// the user cancelled.
std::optional<std::string> AskNewName(QWidget& parent, const std::string& oldName, const RefuseName& refuse);

}  // namespace ml::app
