#pragma once

#include <span>
#include <string_view>

#include "platform/ui/token_menu.h"

namespace ml::batch::ui {

/// Tokens for those who do not know them by heart.
struct TokenHelpGroup {
  std::string_view title;
  std::span<const platform::ui::TokenEntry> tokens;
};

/// All tokens, those most wanted first.
std::span<const TokenHelpGroup> TokenHelpGroups();

}  // namespace ml::batch::ui
