#include "platform/data_folders.h"
#include "platform/paths.h"
#include "settings/settings.h"

namespace ml::settings {

Settings MakeDefaultSettings() {
  Settings settings;
  settings.html.templateBaseDir = platform::JoinPath(platform::programDataDir(), "templates");
  settings.raw.convertDirectory = platform::JoinPath(platform::homeDir(), "Converted Images");
  return settings;
}

}  // namespace ml::settings
