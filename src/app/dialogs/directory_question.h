#pragma once

#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace ml::app {

struct DirectoryQuestion {
  std::string_view title, prompt;
  std::string start;
};

/// What the user typed or chose, as bytes, not looked at; nothing if the user cancelled.
std::optional<std::string> AskDirectory(QWidget& parent, const DirectoryQuestion& question);

}  // namespace ml::app
