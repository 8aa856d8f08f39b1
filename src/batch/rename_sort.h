#pragma once

#include <cstddef>
#include <vector>

#include "batch/rename_image.h"
#include "batch/rename_style.h"

namespace ml::batch {

/// The indices of `images` in the order in which they are numbered.
std::vector<std::size_t> SortedOrder(const std::vector<RenameImage>& images, RenameSort sort);

}  // namespace ml::batch
