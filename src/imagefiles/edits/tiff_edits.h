#pragma once

#include <cstdint>
#include <string>

#include "imagefiles/edits/image_edits.h"

/// What changes in place in TIFF files and the raw formats that build on TIFF. Entries of their rows.
namespace ml::imagefiles {

/// The comment field or the description; with "IPTCcomments" the caption too, where the format holds IPTC data.
void SetTiffComment(ImageFile& file, const std::string& text, const EditTools& tools);
void WriteIptcToTiff(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);
void AdjustTiffDates(ImageFile& file, std::int64_t seconds, const EditTools& tools);

/// The orientation tag, which is made where there is none.
void RotateByTag(ImageFile& file, imaging::Turn turn, const EditTools& tools);
/// The orientation tag; a file without one is left alone.
void RotateByPresentTag(ImageFile& file, imaging::Turn turn, const EditTools& tools);

}  // namespace ml::imagefiles
