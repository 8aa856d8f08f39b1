#include "metadata/ui/format_token_menu.h"

#include <array>
#include <vector>

#include "metadata/format_strings/format_tokens.h"
#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {

void AddFormatTokens(QMenu& menu, const platform::ui::TokenExample& example,
                     const platform::ui::TokenInserter& insert) {
  std::array<std::vector<platform::ui::TokenEntry>, std::size(kTokenGroups)> groups;
  for (const auto& row : FormatTokens()) {
    groups[static_cast<std::size_t>(row.group)].push_back({row.token, row.meaning.empty() ? row.label : row.meaning});
  }
  for (std::size_t i = 0; i < groups.size(); ++i) {
    platform::ui::AddTokens(menu, platform::ui::ToQString(kTokenGroups[i]), groups[i], example, insert);
  }
}

}  // namespace ml::metadata::ui
