#pragma once

#include <string>
#include <vector>

namespace ml::platform {

/// What the directory itself tells of a name, without a look at the file. Link: what it leads to must be asked
/// for, as for the file systems that tell nothing.
enum class EntryKind { File, Directory, Link, Other };

struct DirectoryEntry {
  std::string name;
  EntryKind kind = EntryKind::Link;
};

struct DirectoryListing {
  std::vector<DirectoryEntry> entries;  ///< in the file system's order, without "." and ".."
  bool complete = false;                ///< false if the directory could not be opened, or not be read to its end
};

/// One pass over `directory`; no file is opened or asked.
DirectoryListing ReadDirectory(const std::string& directory);

/// Whether `path` is a file with content of its own, also through symbolic links: no directory, FIFO or device.
bool IsRegularFile(const std::string& path);
/// The same for a directory.
bool IsDirectory(const std::string& path);
/// Whether a volume, or a part of one, is mounted at `directory`; "/" is such a place. A link to one is none.
bool IsMountPoint(const std::string& directory);
/// Whether anything bears this name; a link that leads nowhere does.
bool IsNameTaken(const std::string& path);
/// Whether `path` leads to anything, through symbolic links.
bool Exists(const std::string& path);

}  // namespace ml::platform
