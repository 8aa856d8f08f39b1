#include "settings/setting_table.h"

#include <algorithm>
#include <array>

#include "settings/rows/rows.h"

namespace ml::settings {

std::span<const SettingGroup> SettingGroups() {
  static const std::array groups{
      SettingGroup{"catalogue", CatalogueRows()}, SettingGroup{"raw", RawRows()},
      SettingGroup{"display", DisplayRows()},     SettingGroup{"slideshow", SlideshowRows()},
      SettingGroup{"colour", ColourRows()},       SettingGroup{"printing", PrintRows()},
      SettingGroup{"rename", RenameRows()},       SettingGroup{"shooting data", ShootingDataRows()},
      SettingGroup{"editor", EditorRows()},       SettingGroup{"HTML", HtmlRows()},
      SettingGroup{"proofs", ProofRows()},        SettingGroup{"IPTC", IptcRows()},
      SettingGroup{"email", EmailRows()},
  };
  return groups;
}

const SettingRow* FindSetting(std::string_view key) {
  for (const auto& group : SettingGroups()) {
    const auto row = std::ranges::find(group.rows, key, &SettingRow::key);
    if (row != group.rows.end()) return &*row;
  }
  return nullptr;
}

}  // namespace ml::settings
