#pragma once

#include <QString>
#include <string_view>

class QLabel;
class QWidget;

namespace ml::platform::ui {

/// `text` as it is read: without the "&" before the letter of its key.
QString WithoutMnemonic(std::string_view text);

/// The label before `field`: its key gives `field` the keyboard, and without key and colon it is the name of `field`
/// for those who do not see it.
QLabel* MakeFieldLabel(std::string_view text, QWidget& field, QWidget* parent);

}  // namespace ml::platform::ui
