#pragma once

#include <vector>

#include "batch/new_names.h"
#include "batch/ui/rename_list_model.h"

namespace ml::batch::ui {

/// The lines of the list, with what can be told of each name without looking at the disk.
std::vector<RenameRow> RowsOf(const NewNames& names);

}  // namespace ml::batch::ui
