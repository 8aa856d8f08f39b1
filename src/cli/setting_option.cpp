#include "cli/setting_option.h"

#include "cli/run_state.h"

namespace ml::cli {

void AssignSetting(settings::Settings& settings, std::string_view assignment, settings::SettingUse use) try {
  settings::SetSetting(settings, assignment, use);
} catch (const platform::UserError& error) {
  throw WrongUsage(error.what());
}

}  // namespace ml::cli
