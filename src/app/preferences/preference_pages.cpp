#include "app/preferences/preference_pages.h"

#include <algorithm>
#include <array>

#include "app/preferences/pages/pages.h"

namespace ml::app {

std::span<const PreferencePage> PreferencePages() {
  static const std::array kPages = {
      PreferencePage{"Browsing", BrowsingRows()}, PreferencePage{"Thumbnails", ThumbnailRows()},
      PreferencePage{"Display", DisplayRows()},   PreferencePage{"Colour", ColourRows()},
      PreferencePage{"Files", FileRows()},        PreferencePage{"Raw Images", RawRows()},
      PreferencePage{"IPTC", IptcRows()},         PreferencePage{"Editor", EditorRows()},
      PreferencePage{"Texts", TextRows()},
  };
  return kPages;
}

const PreferenceRow* FindPreference(std::string_view key) {
  for (const auto& page : PreferencePages()) {
    const auto row = std::ranges::find(page.rows, key, &PreferenceRow::key);
    if (row != page.rows.end()) return &*row;
  }
  return nullptr;
}

}  // namespace ml::app
