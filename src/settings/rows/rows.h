#pragma once

#include <span>

#include "settings/setting_table.h"

/// The table's parts, one file each.
namespace ml::settings {

std::span<const SettingRow> CatalogueRows();
std::span<const SettingRow> RawRows();
std::span<const SettingRow> DisplayRows();
std::span<const SettingRow> SlideshowRows();
std::span<const SettingRow> ColourRows();
std::span<const SettingRow> PrintRows();
std::span<const SettingRow> RenameRows();
std::span<const SettingRow> ShootingDataRows();
std::span<const SettingRow> EditorRows();
std::span<const SettingRow> HtmlRows();
std::span<const SettingRow> ProofRows();
std::span<const SettingRow> IptcRows();
std::span<const SettingRow> EmailRows();

}  // namespace ml::settings
