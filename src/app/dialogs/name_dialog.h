#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/dialogs/refusal_box.h"

class QWidget;

namespace ml::app {

struct NameQuestion {
  std::string_view title;
  std::string prompt;
  std::string name;  ///< bytes; stands in the line, selected
};

/// Asks for the name of a directory. A name that is refused is told of, and the dialog stays open; the name it began
/// with is taken unasked where it is not edited. Nothing if the user cancelled.
std::optional<std::string> AskName(QWidget& parent, const NameQuestion& question, const RefuseName& refuse);

}  // namespace ml::app
