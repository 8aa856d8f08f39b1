#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/preferences/preference_row.h"

namespace ml::app {

/// A row by its place in PreferencePages().
struct FoundPreference {
  std::size_t page = 0, row = 0;
  friend bool operator==(const FoundPreference&, const FoundPreference&) = default;
};

/// The rows in which each word of `query` occurs, in any case: in heading, label, explanation, note, choices or key.
/// Nothing for a query without words.
std::vector<FoundPreference> FindPreferences(std::string_view query);

/// Without its mnemonic mark and the colon at its end.
std::string PlainLabel(std::string_view label);

}  // namespace ml::app
