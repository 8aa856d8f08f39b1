#pragma once

#include <optional>

#include "imagefiles/edits/developed_jpegs.h"

class QWidget;

namespace ml::app {

/// Lets the user say how the embedded JPEGs of `count` raw files are made; the fields begin with `start`. Nothing if
/// the user cancelled.
std::optional<imagefiles::EmbeddedJpegSettings> AskRegenerate(QWidget& parent, int count,
                                                              const imagefiles::EmbeddedJpegSettings& start);

}  // namespace ml::app
