#pragma once

#include <cstdint>

#include "imagefiles/edits/image_edits.h"

/// Edits of files whose shooting data stand in a ".thm" companion.
namespace ml::imagefiles {

/// Changes the dates of the companion alone; does nothing without one.
void AdjustThmDateTime(ImageFile& file, std::int64_t seconds, const EditTools& tools);

}  // namespace ml::imagefiles
