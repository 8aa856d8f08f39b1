#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "catalogue/image_list.h"
#include "imagefiles/image_date.h"

namespace ml::catalogue {

/// The time that a file sorts by, in seconds since 1970; below 0 if it has none. Asked once for each file, for
/// its ".thm" companion instead where it has one.
using TimeOfPath = std::function<std::int64_t(const std::string& path)>;

/// Sorts full paths in place; Custom leaves them as they are. With `reverse` every comparison swaps its sides,
/// ties and missing keys included: files without a key, which stand last otherwise, then come first.
void SortList(std::vector<std::string>& list, SortMethod method, bool reverse,
              const TimeOfPath& timeOf = imagefiles::GetImageDateTime);

}  // namespace ml::catalogue
