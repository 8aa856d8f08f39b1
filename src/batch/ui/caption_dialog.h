#pragma once

#include <optional>
#include <string>

class QWidget;

namespace ml::batch::ui {

/// Asks for the format string of the slideshow's captions; nothing if the user cancelled.
std::optional<std::string> AskCaptionFormat(QWidget& parent, const std::string& format);

}  // namespace ml::batch::ui
