#pragma once

#include <functional>

#include "metadata/edit/edited_file.h"
#include "platform/edit_options.h"
#include "platform/readable_file.h"

namespace ml::metadata {

/// Throws UserError if what it looks at is not what the edit was meant to give: the last look before a file changes.
using EditCheck = std::function<void(const ByteSource& edited)>;

/// Makes an edit of `file` real: in place where no byte of it has to move, else through a new file that takes its
/// place once it has been read back and found to be what was asked for. Nothing happens if nothing was touched.
/// Throws UserError naming the file, which then is as it was: also if it is not the one that was read any more.
/// `edited` must have been made from `file`. Gives whether there was anything to write.
bool ApplyEdit(const platform::ReadableFile& file, const EditedFile& edited, const platform::EditOptions& options,
               const EditCheck& check = nullptr);

/// The whole of a small edit: opens `path`, lets `edit` change it, makes that real. An ExifException out of `edit`
/// passes through, with nothing changed.
bool EditFile(const std::string& path, const std::function<void(EditedFile&)>& edit,
              const platform::EditOptions& options, const EditCheck& check = nullptr);

}  // namespace ml::metadata
