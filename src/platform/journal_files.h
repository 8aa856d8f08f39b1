#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/edit_step.h"
#include "platform/open_file.h"

/// The journal on disk: for each batch `<number>.edits` with its lines and, where whole files were kept,
/// `<number>.old` with their bytes one behind the other. A batch in progress holds a lock on its first file.
namespace ml::platform {

std::string JournalDirectory(const std::string& stateDirectory);
/// Ids of the batches, latest first; empty if there is no journal. Throws UserError.
std::vector<std::string> ListBatches(FileSystem& fileSystem, const std::string& directory);
std::string LogPath(const std::string& directory, const std::string& id);
std::string StorePathOf(const std::string& logPath);

/// A new `.edits` file behind all others, locked. Throws UserError.
OpenFile CreateLog(FileSystem& fileSystem, const std::string& directory);
/// Nothing if there is no batch, or not even its first line is whole. Throws UserError if it cannot be read.
std::optional<EditLog> LoadBatch(const OpenFile& log);
/// Throws UserError.
void RemoveBatch(FileSystem& fileSystem, const std::string& directory, const std::string& id);
/// Removes the oldest batches until count and bytes are within their limits, and old contents without batch.
/// Batches in progress stay. Throws UserError.
void PruneJournal(FileSystem& fileSystem, const std::string& directory);

}  // namespace ml::platform
