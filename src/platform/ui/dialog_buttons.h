#pragma once

#include <functional>

class QDialog;

namespace ml::platform::ui {

/// Adds OK and Cancel to the layout of `dialog`, below what it has; they close it. OK does what `accept` says instead,
/// if it is given.
void AddOkAndCancel(QDialog& dialog, const std::function<void()>& accept = {});

}  // namespace ml::platform::ui
