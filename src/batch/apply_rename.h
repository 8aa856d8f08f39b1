#pragma once

#include <string>
#include <vector>

#include "batch/new_names.h"
#include "catalogue/rename_files.h"
#include "platform/interaction.h"

namespace ml::batch {

/// Full paths, in the order in which the images were given. To be handed to RenameFiles of the worker or the catalogue.
struct RenamePaths {
  std::vector<std::string> sources, destinations;
};
/// `directory` ends in "/" or is empty.
RenamePaths PathsOf(const std::string& directory, const NewNames& names);

/// Names the new names that other files bear, with an error icon; for names with a conflict only.
platform::MessageBox ConflictMessage(const NewNames& names);

/// Whether the renaming may be done, right before it is: throws UserError with what is wrong with the first name
/// that cannot be accepted, by the rules in their order. Also looks at what goes with the images: nothing that stays
/// may stand at any new name. Changes nothing.
void CheckNewNames(const std::string& directory, const NewNames& names, catalogue::CaseMode caseMode,
                   imagefiles::CompanionFinder& companions);

}  // namespace ml::batch
