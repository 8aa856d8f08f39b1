#include "app/first_load.h"

#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::app {
namespace {

/// The directory that the program was left in; silent if it is gone.
void LoadLastDirectory(Session& session) {
  const auto& last = session.settings.catalogue.imageFilename;
  if (session.settings.catalogue.loadDirectoryAtStartup == 0 || !session.list.Empty() || last.empty()) return;
  const auto directory = platform::normaliseDirectory(platform::DirectoryOf(last));
  if (!platform::IsDirectory(directory)) return;
  session.Images().LoadDirectory(directory, platform::Exists(last) ? last : "");
}

}  // namespace

void FirstLoad(Session& session, std::span<const std::string> names) {
  if (!session.Open(names)) LoadLastDirectory(session);
}

}  // namespace ml::app
