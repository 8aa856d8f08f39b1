#pragma once

#include "metadata/edit/edited_file.h"
#include "metadata/iptc/iptc_block.h"

namespace ml::metadata {

/// Makes `block` the IPTC data of a JPEG file: the image resource that holds them is replaced, or put in front of the
/// others in the first APP13 segment; every other resource and segment stays as it is, a digest of the old data and XMP
/// included. An empty block takes the resource away. Throws UserError, with nothing changed, if the block is longer
/// than a segment can hold or if the file is no JPEG that is whole up to its picture.
void WriteJpegIptc(EditedFile& file, const IptcBlock& block);

}  // namespace ml::metadata
