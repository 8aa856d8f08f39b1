#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/edit_step.h"
#include "platform/undo.h"

/// Single steps of an undo.
namespace ml::platform {

/// Takes back one step that is known to be in force. May be repeated after it was cut off. Throws UserError;
/// the file is then as before the call.
void RevertStep(const EditStep& step, const UndoContext& context);

std::uint64_t HashRange(const OpenFile& file, std::uint64_t begin, std::uint64_t length);
/// Of a Range: what stood there before.
std::vector<std::byte> OldBytes(const EditStep& step);
/// Of a Range: whether `now` are the new bytes, or, of a write that was cut off, new ones in front and old ones
/// behind.
bool IsNewBytes(const EditStep& step, std::span<const std::byte> now);
/// The file that the step put into the trash; nothing if it is not there any more.
std::optional<TrashedFile> FindInTrash(const EditStep& step, const UndoContext& context);
[[noreturn]] void RefuseChanged(const std::string& path);

}  // namespace ml::platform
