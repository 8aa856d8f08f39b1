#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/dialogs/tool_dialog.h"
#include "imagefiles/tools/export_exif.h"

namespace ml::app {

struct ExportChoice {
  imagefiles::ExportSettings settings{};  ///< its format is empty where the usual fields are wanted
  std::string ownFormat{};                ///< the user's own fields, wanted or not
  bool ownFields = false;
  bool all = false;  ///< all images of the directory instead of the selected ones
};

/// What would be written for the first image.
using ExportExample = std::function<std::string(const imagefiles::ExportSettings& settings)>;

/// Lets the user say what is exported and where to; the fields begin with `start`. `place`: see ToolDialog::RunAt().
/// Nothing if the user cancelled.
std::optional<ExportChoice> AskExport(QWidget& parent, std::string& place, const ToolImages& images,
                                      const ExportChoice& start, const ExportExample& example);

}  // namespace ml::app
