#pragma once

#include <cstdint>
#include <string>

#include "imagefiles/companion_finder.h"
#include "imagefiles/image_file.h"
#include "imaging/pixel_buffer.h"
#include "metadata/iptc/iptc_block.h"
#include "platform/edit_options.h"

/// What changes in an image file, for all formats. Each function does the whole of one edit: it asks the format's row
/// whether the edit exists, lifts the file's protection, writes, and tells the handler, which puts protection and time
/// back as the settings want. What a format refuses, and all failures, are UserErrors; the file is then as it was.
namespace ml::imagefiles {

/// What edits work with. Owns nothing.
struct EditTools {
  const ImageFileOptions& options;
  CompanionFinder& companions;
  platform::EditOptions edit = {};
};

/// Turns the picture clockwise, without loss where the format allows it.
void Rotate(ImageFile& file, imaging::Turn turn, const EditTools& tools);

/// Bytes; they are cut where the field of the format is shorter.
void SetComment(ImageFile& file, const std::string& text, const EditTools& tools);

/// Makes `block` the file's IPTC data: its items of the application record, and around them what else is to be kept.
void WriteIptc(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);

/// Adds `seconds`, which may be negative, to the recorded dates. A file without a date that can be read, and one whose
/// format records none, is left alone.
void AdjustDateTime(ImageFile& file, std::int64_t seconds, const EditTools& tools);

}  // namespace ml::imagefiles
