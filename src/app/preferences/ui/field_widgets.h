#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/preferences/preference_row.h"

class QWidget;

namespace ml::app {

/// Lets the user choose the file of a profile; `start` is the path in the field. Nothing if cancelled.
using BrowseProfile = std::function<std::optional<std::string>(const std::string& start)>;

/// What a text with tokens gives for the image on show; nothing without an image.
using FormatExample = std::function<std::optional<std::string>(TextForm form, const std::string& format)>;

/// What fields need of the program around them; either may be empty.
struct FieldHelp {
  BrowseProfile browse;
  FormatExample example;
};

/// The widgets of one field.
struct FieldWidgets {
  QWidget* whole;                                ///< goes into the form
  QWidget* focus;                                ///< takes the keyboard
  std::function<void(const std::string&)> show;  ///< shows a value without telling
  QWidget* below = nullptr;                      ///< stands in a row of its own; null for none
};

/// `edited` gets each value that the user enters.
FieldWidgets MakeFieldWidgets(const PreferenceRow& row, const FieldHelp& help,
                              const std::function<void(const std::string&)>& edited, QWidget* parent);

}  // namespace ml::app
