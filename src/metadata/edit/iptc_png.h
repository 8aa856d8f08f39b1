#pragma once

#include "metadata/edit/edited_file.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::metadata {

enum class CaptionIsComment { No, Yes };

/// Makes the items of the application record the IPTC data of a PNG file: as the text "IPTC", and the by-line,
/// instructions and copyright notice also as the texts that other programs look for; the caption only if it is the
/// comment. Such a text goes with its value if it was made from it, and stays if it came from somewhere else. Where
/// there is the text with a raw profile, it is kept true. All other chunks stay as they are. Throws UserError with
/// nothing changed.
void WritePngIptc(EditedFile& file, const IptcBlock& block, CaptionIsComment caption);

}  // namespace ml::metadata
