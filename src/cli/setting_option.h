#pragma once

#include <string_view>

#include "settings/setting_list.h"

namespace ml::cli {

/// settings::SetSetting for what the user typed: throws WrongUsage.
void AssignSetting(settings::Settings& settings, std::string_view assignment, settings::SettingUse use);

}  // namespace ml::cli
