#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/preferences/preference_row.h"

class QWidget;

namespace ml::app {

/// Lets the user choose the file of a profile; `start` is the path in the field. Nothing if cancelled.
using BrowseProfile = std::function<std::optional<std::string>(const std::string& start)>;

/// The widgets of one field.
struct FieldWidgets {
  QWidget* whole;                                ///< goes into the form
  QWidget* focus;                                ///< takes the keyboard
  std::function<void(const std::string&)> show;  ///< shows a value without telling
};

/// `edited` gets each value that the user enters.
FieldWidgets MakeFieldWidgets(const PreferenceRow& row, const BrowseProfile& browse,
                              const std::function<void(const std::string&)>& edited, QWidget* parent);

}  // namespace ml::app
