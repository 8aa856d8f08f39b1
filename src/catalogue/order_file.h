#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/image_list.h"
#include "catalogue/list_file.h"

namespace ml::catalogue {

/// Stands in each directory that was shown.
inline constexpr std::string_view kOrderFileName = "marrowlantern.dat";

/// What an order file says.
struct DirectoryOrder {
  SortMethod sortMethod = SortMethod::Numeric;
  bool reverse = false;
  std::vector<std::string> names;  ///< the custom order, by bare names
};

/// The word for a sort method in the order file: "numeric", "alphabetical", "timestamp", "filetype", "custom".
std::string SortMethodWord(SortMethod method);

/// Reads the text of an order file over `order`: method and direction stay where the text does not give them,
/// names are those of the last list in it. Of a damaged text, what can be understood is used.
void ParseOrderText(std::string_view text, DirectoryOrder& order);

/// The text of an order file. `directory` (with "/" at its end) is only for people to read. Names with a line
/// break are left out.
std::string BuildOrderText(std::string_view directory, const DirectoryOrder& order);

/// Whether `name` can stand in the order and the tag file, where a name is a line.
bool FitsOnALine(std::string_view name);

/// Reads `path` into sort method, direction and custom order of `catalogue`; a custom order in force arranges
/// `list`, which is about to be shown: files that the order does not name go behind. Without a readable file
/// the method stays, custom turned to alphabetical, and the custom order is empty. The custom order's paths are
/// in the directory of `path`, or, if `list` is empty, in that of the catalogue.
ReadState LoadOrderFile(const std::string& path, std::vector<std::string>& list, ImageList& catalogue);

}  // namespace ml::catalogue
