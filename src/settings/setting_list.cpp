#include "settings/setting_list.h"

#include <array>
#include <cmath>
#include <limits>

#include "platform/errors.h"
#include "platform/numbers.h"
#include "settings/messages.h"
#include "settings/setting_value.h"

namespace ml::settings {

namespace {

SettingValue ValueIn(const SettingSlot& slot) {
  return std::visit(
      [](const auto* value) -> SettingValue {
        using Value = std::remove_cvref_t<decltype(*value)>;
        if constexpr (std::is_same_v<Value, platform::FontRecord>) {
          return value->Hex();
        } else if constexpr (std::is_same_v<Value, std::uint8_t>) {
          return std::int32_t{*value};
        } else {
          return *value;
        }
      },
      slot);
}

[[noreturn]] void Refuse(const SettingRow& row, std::string_view range) {
  throw platform::UserError(SettingTakes(row.key, range));
}

void AssignNumber(const SettingRow& row, const SettingSlot& slot, std::string_view text) {
  const bool isByte = TypeOf(slot) == SettingType::Byte;
  const auto number = platform::WholeNumber<std::int32_t>(text);
  const bool fits =
      number && (!isByte || (*number >= 0 && *number <= std::int32_t{std::numeric_limits<std::uint8_t>::max()}));
  if (!fits) Refuse(row, isByte ? kByteRange : kDwordRange);
  AssignInteger(row, slot, *number);
}

void AssignText(const SettingRow& row, const SettingSlot& slot, std::string_view text) {
  switch (TypeOf(slot)) {
    case SettingType::Dword:
    case SettingType::Byte:
      AssignNumber(row, slot, text);
      break;
    case SettingType::String:
      if (text.size() >= kTextLimit) Refuse(row, kTextRange);
      *std::get<std::string*>(slot) = text;
      break;
    case SettingType::Decimal: {
      const auto number = platform::WholeNumber<double>(text);
      if (!number || !std::isfinite(*number)) Refuse(row, kDecimalRange);
      *std::get<double*>(slot) = *number;
      break;
    }
    case SettingType::Font:
      if (!std::get<platform::FontRecord*>(slot)->SetHex(text)) Refuse(row, kFontRange);
      break;
  }
}

}  // namespace

std::string_view SettingTypeName(SettingType type) {
  constexpr std::array<std::string_view, 5> kNames{"dword", "byte", "string", "decimal", "font"};
  return kNames[static_cast<std::size_t>(type)];
}

std::string SettingText(const SettingValue& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
  if (const auto* decimal = std::get_if<double>(&value)) return platform::ExactNumber(*decimal);
  return std::get<std::string>(value);
}

std::vector<SettingEntry> ListSettings(const Settings& settings) {
  Settings values = settings;
  Settings defaults = MakeDefaultSettings();
  std::vector<SettingEntry> entries;
  for (const auto& group : SettingGroups()) {
    for (const auto& row : group.rows) {
      if (row.stored == Stored::WriteOnly) continue;
      const auto slot = row.slot(values);
      entries.push_back({row.key, TypeOf(slot), ValueIn(row.slot(defaults)), ValueIn(slot)});
    }
  }
  return entries;
}

void SetSetting(Settings& settings, std::string_view assignment, SettingUse use) {
  const auto equals = assignment.find('=');
  if (equals == std::string_view::npos) throw platform::UserError(NotAnAssignment(assignment));
  const auto key = assignment.substr(0, equals);
  const auto* row = FindSetting(key);
  if (row == nullptr) throw platform::UserError(UnknownSetting(key));
  if (use == SettingUse::Persist && row->stored == Stored::ReadOnly) throw platform::UserError(SetByHandOnly(key));
  AssignText(*row, row->slot(settings), assignment.substr(equals + 1));
}

}  // namespace ml::settings
