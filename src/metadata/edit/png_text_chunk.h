#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "metadata/edit/edited_file.h"

namespace ml::metadata {

enum class PngTextForm {
  Text,   ///< for people: a text that is more than ASCII is marked as UTF-8 if it is
  Bytes,  ///< for programs: as it is
};

/// The chunk with its checksum. `key` has 1 to 79 characters. Throws UserError if the text is longer than what is read
/// from such files.
std::vector<std::byte> BuildPngText(std::string_view key, std::string_view text, PngTextForm form);

/// Puts `text` in the place of the first text chunk with this key, or in front of the pixels; an empty text takes all
/// of this key away. Throws UserError if the file is not whole, or as BuildPngText.
void SetPngText(EditedFile& file, std::string_view key, std::string_view text, PngTextForm form);

}  // namespace ml::metadata
