#pragma once

#include "metadata/edit/edited_file.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::metadata {

/// Makes `block` the IPTC data of a JPEG 2000 file: their box is replaced or put behind the last one, and no other box
/// moves; a last box that says "to the end" gets its length first. An empty block takes the box away. Throws UserError
/// with nothing changed, also for a bare code stream, which has no boxes.
void WriteJp2Iptc(EditedFile& file, const IptcBlock& block);

}  // namespace ml::metadata
