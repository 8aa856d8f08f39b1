#include "batch/apply_rename.h"

#include <unistd.h>

#include <algorithm>

#include "batch/messages.h"
#include "batch/name_faults.h"
#include "catalogue/rename_plan.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

using platform::UserError;

/// Names that differ in case alone are looked for once all else is in order.
void CheckNames(const NewNames& names) {
  const auto faults = FaultsOf(names);
  for (const bool caseAlone : {false, true}) {
    for (std::size_t i = 0; i < faults.size(); ++i) {
      if (faults[i] == NameFault::None || (faults[i] == NameFault::SameButForCase) != caseAlone) continue;
      throw UserError(SentenceOf(faults[i], names.rows[i]));
    }
  }
}

}  // namespace

RenamePaths PathsOf(const std::string& directory, const NewNames& names) {
  RenamePaths paths;
  paths.sources.resize(names.rows.size());
  paths.destinations.resize(names.rows.size());
  for (const auto& row : names.rows) {
    paths.sources[row.given] = directory + row.oldName;
    paths.destinations[row.given] = directory + row.newName;
  }
  return paths;
}

platform::MessageBox ConflictMessage(const NewNames& names) {
  std::string text = kConflictHeading;
  for (const auto& row : names.rows) {
    if (row.conflict) text += row.newName + "\n";
  }
  return {std::string(platform::TrimRight(text)), "Marrowlantern", platform::BoxIcon::Error};
}

void CheckNewNames(const std::string& directory, const NewNames& names, catalogue::CaseMode caseMode,
                   imagefiles::CompanionFinder& companions) {
  if (names.HasConflict()) throw UserError(kNamesConflict);
  CheckNames(names);
  if (::access(directory.empty() ? "." : directory.c_str(), W_OK) != 0) throw UserError(notWritable(directory));
  const auto paths = PathsOf(directory, names);
  const auto plan = catalogue::PlanRename(paths.sources, paths.destinations, caseMode, companions);
  const auto displaced = std::ranges::find_if(
      plan.steps, [](const auto& step) { return step.kind == catalogue::RenameStep::Kind::Displace; });
  if (displaced != plan.steps.end()) throw UserError(fileInTheWay(displaced->change.to));
}

}  // namespace ml::batch
