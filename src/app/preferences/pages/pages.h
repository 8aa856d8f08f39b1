#pragma once

#include <span>

#include "app/preferences/preference_row.h"

/// The rows of the pages, one file each.
namespace ml::app {

std::span<const PreferenceRow> BrowsingRows();
std::span<const PreferenceRow> ThumbnailRows();
std::span<const PreferenceRow> DisplayRows();
std::span<const PreferenceRow> ColourRows();
std::span<const PreferenceRow> FileRows();
std::span<const PreferenceRow> RawRows();
std::span<const PreferenceRow> IptcRows();
std::span<const PreferenceRow> EditorRows();
std::span<const PreferenceRow> TextRows();

}  // namespace ml::app
