#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "batch/new_names.h"

namespace ml::batch {

/// Puts numbers for "%u", then for "%U", into the new names of `rows`: for each name in turn the lowest one with which
/// no other new name and none of `otherFiles` has its stem, letters' case aside. `digits` is the least width of "%u".
void FillUniqueNumbers(std::vector<NewName>& rows, const std::vector<std::string>& otherFiles, std::size_t digits);

}  // namespace ml::batch
