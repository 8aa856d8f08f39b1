#pragma once

#include <cstdint>
#include <string>

#include "imagefiles/edits/image_edits.h"

/// Edits of the JPEG that stands beside an image, the ".thm" of a camera or a viewing JPEG. An empty path is no
/// companion, and nothing happens. They throw what the same edits of a JPEG throw; its protection and time are kept as
/// those of the image.
namespace ml::imagefiles {

void SetCompanionComment(const std::string& jpeg, const std::string& text, const EditTools& tools);
void WriteCompanionIptc(const std::string& jpeg, const metadata::IptcBlock& block, const EditTools& tools);
void AdjustCompanionDates(const std::string& jpeg, std::int64_t seconds, const EditTools& tools);
/// The orientation tag, clockwise degrees; a file without one is left alone.
void OrientCompanion(const std::string& jpeg, int degrees, const EditTools& tools);

}  // namespace ml::imagefiles
