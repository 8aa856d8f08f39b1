#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/font_record.h"
#include "settings/settings.h"

namespace ml::settings {

/// Where a value lives. The type of the slot says how it is stored: int as an integer; std::uint8_t as an
/// integer of which only the low byte is kept; text as text; double as text holding a decimal number; a font
/// as 120 hexadecimal digits.
using SettingSlot = std::variant<int*, std::uint8_t*, std::string*, double*, platform::FontRecord*>;

/// The alternatives of SettingSlot by number.
enum class SettingType { Dword, Byte, String, Decimal, Font };
inline SettingType TypeOf(const SettingSlot& slot) { return static_cast<SettingType>(slot.index()); }

/// ReadOnly: a user sets it in the file by hand. WriteOnly: every run starts with the default.
enum class Stored { ReadWrite, ReadOnly, WriteOnly };

/// One stored value: its key, its place, which ways it travels, and what a number becomes when it is read
/// (null: itself).
struct SettingRow {
  std::string_view key;
  SettingSlot (*slot)(Settings&);
  Stored stored = Stored::ReadWrite;
  int (*admit)(int) = nullptr;
};

/// The rows of one group, in the order in which they are shown.
struct SettingGroup {
  std::string_view name;
  std::span<const SettingRow> rows;
};

/// All settings with a key of their own: the one list.
std::span<const SettingGroup> SettingGroups();

/// The row of `key`, spelt exactly; null if there is none.
const SettingRow* FindSetting(std::string_view key);

}  // namespace ml::settings
