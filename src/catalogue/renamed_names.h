#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/edit_journal.h"

/// Tag and order files know the files of their directory by name. Where no list of the directory is at hand, these
/// functions let them follow files that got other names.
namespace ml::catalogue {

/// Full paths of files as they were called, with their names now.
using RenamedPaths = std::unordered_map<std::string, std::string>;

/// What a batch of renames comes to when it has been taken back.
RenamedPaths PathsTakenBack(const std::vector<platform::JournalRename>& renames);

/// Brings the tag and the order file of each directory in `renamed` up to date, after the files have their new names.
/// Whoever goes to another directory is left alone. A name that stood there without a file says nothing of one that
/// bears it now. Gives the paths of those that could not be read or written, which stay as they are.
std::vector<std::string> FollowInDirectories(const RenamedPaths& renamed);

}  // namespace ml::catalogue
