#pragma once

#include <vector>

#include "metadata/byte_view.h"
#include "metadata/file_range.h"

namespace ml::metadata {

/// Values of a maker's note that stand outside of it, as in files whose note was cut short by an editor: who overwrites
/// something else must not touch them. `note` is inside `tiff`, whose first byte is the TIFF header. Only of notes that
/// count from their own start: what others point to is anything once an editor has moved them.
std::vector<FileRange> FindMakerNoteReach(ByteView tiff, FileRange note);

}  // namespace ml::metadata
