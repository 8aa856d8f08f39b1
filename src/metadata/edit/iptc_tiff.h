#pragma once

#include "metadata/edit/edited_file.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::metadata {

/// Makes `block` the IPTC data of a TIFF-based file, tag 33723 of its first directory: where the old data stood if
/// there is room, filled up with zeros, else behind the end of the file. An empty block takes tag and data away.
/// Throws ExifException as UpdateIfdEntry, with nothing changed; also if the directory has so many entries that readers
/// saw none of the old data.
void WriteTiffIptc(EditedFile& file, const IptcBlock& block);

}  // namespace ml::metadata
