#pragma once

#include <optional>
#include <string>

#include "app/dialogs/tool_dialog.h"
#include "imagefiles/tools/copy_exif.h"

namespace ml::app {

struct ExifCopyChoice {
  std::string directory;
  imagefiles::CopyTargets targets = imagefiles::CopyTargets::JpegsOnly;
  bool all = false;  ///< all images of the directory instead of the selected ones
};

/// Lets the user say where the files are that get the shooting data; the fields begin with `start`. `place`: see
/// ToolDialog::RunAt(). Nothing if the user cancelled.
std::optional<ExifCopyChoice> AskExifCopy(QWidget& parent, std::string& place, const ToolImages& images,
                                          const ExifCopyChoice& start);

}  // namespace ml::app
