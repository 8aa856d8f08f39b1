#pragma once

#include <string>

class QLabel;
class QWidget;

namespace ml::platform::ui {

/// What is to be said about the field above it; takes no room while there is nothing to say.
QLabel* MakeRemark(QWidget* parent);
void SetRemarkText(QLabel& remark, const std::string& text);

}  // namespace ml::platform::ui
