#pragma once

#include <optional>

class QWidget;

namespace ml::app {

struct TimestampChoice {
  bool all = false;       ///< all images of the directory instead of the selected ones
  bool readOnly = false;  ///< the files become read-only too
};

/// Nothing if the user cancelled. Without a selection only all images can be chosen.
std::optional<TimestampChoice> AskTimestamp(QWidget& parent, bool nothingSelected);

}  // namespace ml::app
