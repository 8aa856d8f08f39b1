#pragma once

#include <string>
#include <vector>

#include "catalogue/rename_files.h"
#include "catalogue/rename_steps.h"
#include "imagefiles/companion_finder.h"
#include "platform/file_system.h"

namespace ml::catalogue {

/// How several images with their companions come to their new names.
struct RenamePlan {
  std::vector<RenameStep> steps;
  std::vector<std::string> newPaths;  ///< of the images, in the order of the sources
};

/// Works out what RenameFiles does, with its arguments and errors. Nothing is changed.
RenamePlan PlanRename(const std::vector<std::string>& sources, const std::vector<std::string>& destinations,
                      CaseMode caseMode, imagefiles::CompanionFinder& companions,
                      platform::FileSystem& fileSystem = platform::RealFileSystem());

}  // namespace ml::catalogue
