#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/image_list.h"

namespace ml::catalogue {

/// Names the tagged images of its directory.
inline constexpr std::string_view kTagFileName = "tagged_files.txt";

/// The names in a directory's tag file, without white space at their ends. Lines count up to 259 bytes, longer
/// than any file name; what lies behind is passed over.
std::vector<std::string> ParseTagFile(std::string_view text);

/// One name a line, CRLF at its end. Names with a line break are left out.
std::string BuildTagFile(const std::vector<std::string>& names);

/// Tags the entries of `directory` (with "/" at its end) that `names` gives.
void TagNames(ImageList& list, std::string_view directory, const std::vector<std::string>& names);

/// A tag list of the user's: one full path a line, LF at its end. Paths with a line break are left out.
std::string BuildTagList(const std::vector<std::string>& paths);

/// What becomes of the tags that were there before a tag list is loaded.
enum class EarlierTags { Drop, Keep };

enum class TagMatch { StemAndExtension, StemOnly };

/// Tags the entries that the lines of a tag list name. The directories in the list do not matter: with
/// StemAndExtension a line stands for the file of its name in the directory of the first entry, with StemOnly
/// for every entry with its stem. A line counts up to 4,095 bytes.
void ApplyTagList(ImageList& list, std::string_view text, TagMatch match);

}  // namespace ml::catalogue
