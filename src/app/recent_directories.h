#pragma once

#include <string>
#include <vector>

#include "settings/groups/window_settings.h"

namespace ml::app {

/// Puts `directory` at the head of `recent`, without the "/" at its end; other entries that lead to the same
/// directory go, and so does what is too many.
void AddRecentDirectory(settings::RecentDirectories& recent, const std::string& directory);

/// The entry of the menu at `place` (from 0): "&1 /home/me/shots", with "&" in the name doubled.
std::string RecentDirectoryText(std::size_t place, const std::string& directory);

}  // namespace ml::app
