#pragma once

#include "imagefiles/edits/image_edits.h"

/// What writes IPTC data, for the rows of the formats.
namespace ml::imagefiles {

void WriteIptcIntoJpeg(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);
void WriteIptcIntoPng(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);
void WriteIptcIntoPsd(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);
void WriteIptcIntoJp2(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);
/// Into the ".thm" that goes with the file. Throws UserError if there is none.
void WriteIptcIntoThm(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools);

/// For formats whose one place for a comment is the IPTC caption.
void SetCommentAsCaption(ImageFile& file, const std::string& text, const EditTools& tools);
/// Into the text that describes a PNG file, or where the settings say so the IPTC caption and that.
void SetPngComment(ImageFile& file, const std::string& text, const EditTools& tools);

}  // namespace ml::imagefiles
