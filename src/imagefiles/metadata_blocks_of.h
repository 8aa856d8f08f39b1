#pragma once

#include <string>

#include "imagefiles/image_file_options.h"
#include "imaging/writers/metadata_blocks.h"
#include "platform/locale_text.h"

namespace ml::imagefiles {

/// What a picture made of the file `source` takes along: its shooting data and their text in `locale`, its EXIF segment
/// (of a CRW and whatever is no JPEG that of the ".thm" beside it), its maker's note, its IPTC data, and the colour
/// profile in the file `profile`, or if that is empty or holds none that can be used, the source's own. An empty
/// `source` leaves the profile. What cannot be read is left out. Never throws for what a file holds.
imaging::MetadataBlocks ReadMetadataBlocks(const std::string& source, const std::string& profile,
                                           const ImageFileOptions& options, const platform::LocaleText& locale);

}  // namespace ml::imagefiles
