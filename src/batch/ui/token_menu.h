#pragma once

#include <functional>
#include <string>
#include <string_view>

class QLineEdit;
class QMenu;

namespace ml::batch::ui {

/// What a token gives for the first image of the list; may be empty.
using TokenExample = std::function<std::string(std::string_view token)>;

/// Fills `menu` with all tokens, their meanings and examples, which are made each time that a part of the menu opens.
/// A chosen token goes into `line` at its cursor.
void FillTokenMenu(QMenu& menu, QLineEdit& line, const TokenExample& example);

}  // namespace ml::batch::ui
