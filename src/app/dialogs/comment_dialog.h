#pragma once

#include <optional>
#include <string>

class QWidget;

namespace ml::app {

/// Lets the user edit the comment of the image `name`. The bytes of a comment that nobody edits stay as they are.
/// Nothing if the user cancelled or left it alone.
std::optional<std::string> EditComment(QWidget& parent, const std::string& name, const std::string& comment);

}  // namespace ml::app
