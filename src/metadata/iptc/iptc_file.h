#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "metadata/byte_view.h"
#include "metadata/iptc_item.h"
#include "platform/atomic_file.h"

/// Files that hold nothing but IPTC data: our own, ".ipt", and those of another editor, ".ffo".
namespace ml::metadata {

/// Whether the name ends as one of the two.
bool IsIptcFile(std::string_view path);

/// The items of the application record. Throws UserError if a value is longer than what is ever written or if the file
/// cannot be read.
std::vector<IptcItem> LoadIptcFile(const std::string& path);
/// Writes the items of the application record whose values are below the edit limit. Throws UserError.
void SaveIptcFile(const std::string& path, const std::vector<IptcItem>& items, platform::ExistingFile existing);

/// The same of bytes. `path` is for the sentence.
std::vector<IptcItem> ParseIptcFile(const std::string& path, ByteView bytes);
std::string BuildIptcFile(const std::vector<IptcItem>& items);

}  // namespace ml::metadata
