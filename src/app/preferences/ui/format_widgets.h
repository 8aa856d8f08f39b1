#pragma once

#include "app/preferences/ui/field_widgets.h"

namespace ml::app {

/// A line for the text, a menu that puts tokens into it, and below it what comes out for the image on show; without
/// an image, what the tokens stand for.
FieldWidgets MakeFormatWidgets(const FormatField& field, const PreferenceRow& row, const FormatExample& example,
                               const std::function<void(const std::string&)>& edited, QWidget* parent);

}  // namespace ml::app
