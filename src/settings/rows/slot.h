#pragma once

#include "settings/setting_table.h"

namespace ml::settings {

/// The slot reached from the settings through a chain of members.
template <auto Group, auto... Members>
SettingSlot At(Settings& settings) {
  return &((settings.*Group).*....*Members);
}

/// Choices of which only 1 and 2 exist besides the default.
constexpr int OneTwoOrZero(int value) { return value == 1 || value == 2 ? value : 0; }

}  // namespace ml::settings
