#pragma once

#include <span>
#include <string_view>

namespace ml::batch::ui {

/// One token for those who do not know them by heart.
struct TokenHelp {
  std::string_view token, meaning;
};

struct TokenHelpGroup {
  std::string_view title;
  std::span<const TokenHelp> tokens;
};

/// All tokens, those most wanted first.
std::span<const TokenHelpGroup> TokenHelpGroups();

}  // namespace ml::batch::ui
