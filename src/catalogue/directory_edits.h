#pragma once

#include <optional>
#include <string>

#include "catalogue/delete_files.h"

/// Directories made, renamed and deleted. All paths are full, without "/" at their end.
namespace ml::catalogue {

/// Why no directory can bear this bare name, a sentence; nothing if one can.
std::optional<std::string> RefuseFolderName(const std::string& name);

/// Makes a directory in `parent`, which gives its path. Throws UserError, also if anything bears the name.
std::string MakeFolder(const std::string& parent, const std::string& name);

/// Gives a directory, or a link to one, another name beside its old one, which gives its path; a name that differs in
/// case only is another one. Throws UserError with nothing changed, also if anything else bears the name.
std::string RenameDirectory(const std::string& directory, const std::string& name, platform::EditBatch* batch);

/// Deletes a directory with all that is in it, or a link itself; `to` is not DeletedFolder. Throws UserError, with
/// nothing deleted if a volume is mounted in it, or that cannot be told.
void DeleteDirectory(const std::string& directory, DeleteTo to, platform::Trash& trash, platform::EditBatch* batch);

}  // namespace ml::catalogue
