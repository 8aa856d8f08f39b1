#pragma once

#include <optional>
#include <string>
#include <vector>

#include "imagefiles/edits/image_edits.h"
#include "imagefiles/tools/tool_run.h"
#include "platform/dir_index.h"
#include "platform/interaction.h"

/// Shooting data copied from images to the pictures made of them.
namespace ml::imagefiles {

enum class CopyExifResult {
  Copied,
  Declined,  ///< the destination is read-only, and the user wants it to stay as it is
};

/// Puts the shooting data of `source`, with its IPTC data, into `destination`: a JPEG, a TIFF, or an image whose ".thm"
/// takes them. The picture and its orientation stay, so does a colour profile. Asks before a read-only file is written
/// to. Throws UserError with the destination as it was: also if both are one file, and if the source has no shooting
/// data, which would only wipe out those of the destination.
CopyExifResult CopyExif(const std::string& source, const std::string& destination, const EditTools& tools,
                        platform::Interaction& ask);

enum class CopyTargets { JpegsOnly, JpegsAndTiffs };

/// The files in the directory of `index` that are made of `source` by their names, in the order in which they are
/// tried, full paths in the spelling on disk. Among them may be the source itself.
std::vector<std::string> FindCopyTargets(const std::string& source, platform::DirIndex& index,
                                         CopyTargets targets = CopyTargets::JpegsAndTiffs);

struct CopyExifJob {
  std::vector<std::string> sources;
  std::string directory;                             ///< where the targets are
  CopyTargets targets = CopyTargets::JpegsAndTiffs;  ///< "CopyExifDataToTiffs"
};

/// Throws UserError unless there is such a directory.
void RequireCopyDirectory(const std::string& directory);

/// CopyExif() for every source and each of its targets but itself. A source without a target is skipped. Throws as
/// RequireCopyDirectory() before anything is done.
ToolReport CopyExifBatch(const CopyExifJob& job, const EditTools& tools, const ToolRun& run);

}  // namespace ml::imagefiles
