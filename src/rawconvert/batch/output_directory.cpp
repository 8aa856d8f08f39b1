#include "rawconvert/batch/output_directory.h"

#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

constexpr char kBesideSource[] = "CONVERTED";

}  // namespace

std::string ConversionDirectory(const std::string& source, const DirectoryChoice& choice) {
  const std::string here(platform::DirectoryOf(source));
  if (choice.besideSource) return platform::JoinPath(here, kBesideSource);
  const auto end = choice.directory.find_last_not_of(" /");
  if (end == std::string::npos) return choice.directory.starts_with('/') ? "/" : here;
  const auto typed = choice.directory.substr(0, end + 1);
  return platform::normaliseDirectory(typed.front() == '/' ? typed : platform::JoinPath(here, typed));
}

void EnsureConversionDirectory(const std::string& directory) {
  if (platform::Exists(directory) && !platform::IsDirectory(directory))
    throw platform::UserError(messages::kError + directory + platform::messages::kIsNotADirectory);
  platform::ensureDirectory(directory, platform::messages::kErrorCreatingDirectory);
}

}  // namespace ml::rawconvert
