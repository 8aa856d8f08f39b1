#pragma once

#include <string>

#include "imagefiles/size_fitting.h"

namespace CLI {
class App;
}

namespace ml::cli {

/// --box, into `text`; the command must have it.
void AddBoxOption(CLI::App& command, std::string& text);
/// "640x480" to limits; throws the parser's error for anything else.
imagefiles::DisplayLimits ParseBox(const std::string& text);

}  // namespace ml::cli
