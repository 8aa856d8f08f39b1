#pragma once

#include <cstdint>
#include <string>

#include "imagefiles/edits/image_edits.h"

/// CRW files, whose own records and the ".thm" beside them change together, and movies, of which only the ".thm" does.
/// Entries of the formats' rows.
namespace ml::imagefiles {

void RotateCrw(ImageFile& file, imaging::Turn turn, const EditTools& tools);
void AdjustCrwDate(ImageFile& file, std::int64_t seconds, const EditTools& tools);
/// Into the file's own record, if it has one and the text is short enough, and into the companion.
void SetCrwComment(ImageFile& file, const std::string& text, const EditTools& tools);
/// Those of the companion alone; without one nothing happens.
void AdjustAviDate(ImageFile& file, std::int64_t seconds, const EditTools& tools);
/// Into the companion; throws UserError without one.
void SetAviComment(ImageFile& file, const std::string& text, const EditTools& tools);

}  // namespace ml::imagefiles
