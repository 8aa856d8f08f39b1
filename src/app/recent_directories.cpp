#include "app/recent_directories.h"

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::app {

void AddRecentDirectory(settings::RecentDirectories& recent, const std::string& directory) {
  const auto shown = platform::normaliseDirectory(directory);
  std::erase_if(recent, [&](const std::string& old) { return platform::SameFile(old, shown); });
  recent.insert(recent.begin(), shown);
  if (recent.size() > settings::kMaxRecentDirectories) recent.resize(settings::kMaxRecentDirectories);
}

std::string RecentDirectoryText(std::size_t place, const std::string& directory) {
  return "&" + std::to_string(place + 1) + " " + platform::ReplaceAll(platform::ToDisplayLine(directory), "&", "&&");
}

}  // namespace ml::app
