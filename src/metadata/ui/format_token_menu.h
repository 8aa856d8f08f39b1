#pragma once

#include "platform/ui/token_menu.h"

namespace ml::metadata::ui {

/// Fills `menu` with all tokens of format strings, in their groups.
void AddFormatTokens(QMenu& menu, const platform::ui::TokenExample& example, const platform::ui::TokenInserter& insert);

}  // namespace ml::metadata::ui
