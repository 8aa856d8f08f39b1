#pragma once

#include <optional>

#include "app/dialogs/tool_dialog.h"
#include "imagefiles/tools/extract_jpegs.h"

namespace ml::app {

struct ExtractChoice {
  imagefiles::ExtractSettings settings{};
  bool all = false;  ///< all raw files of the directory instead of the selected ones
};

/// Lets the user say what is extracted and where to; the fields begin with `start`. `place`: see ToolDialog::RunAt().
/// The directory may be missing still. Nothing if the user cancelled.
std::optional<ExtractChoice> AskExtract(QWidget& parent, std::string& place, const ToolImages& raws,
                                        const imagefiles::ExtractSettings& start);

}  // namespace ml::app
