#pragma once

#include <cstdint>
#include <string>

#include "imagefiles/edits/image_edits.h"

/// EOS-1D raw files: each edit is done in the raw file and, where there is one, in its viewing JPEG. Entries of the
/// format's row.
namespace ml::imagefiles {

void RotateEos1D(ImageFile& file, imaging::Turn turn, const EditTools& tools);
void SetEos1DComment(ImageFile& file, const std::string& text, const EditTools& tools);
void WriteIptcToEos1D(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);
void AdjustEos1DDates(ImageFile& file, std::int64_t seconds, const EditTools& tools);

}  // namespace ml::imagefiles
