#pragma once

#include "metadata/edit/edited_file.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::metadata {

/// Makes `block` the IPTC data of a PSD file: their image resource is replaced or put in front of the others, of which
/// none changes. An empty block takes it away. Throws UserError with nothing changed.
void WritePsdIptc(EditedFile& file, const IptcBlock& block);

}  // namespace ml::metadata
