#pragma once

#include "metadata/byte_source.h"
#include "metadata/exif_data.h"

/// What is known of a record only once its file was read: each a step of the construction, in this order.
namespace ml::metadata {

/// Canon's ".crw" and ".jpg" files: what their firmware is, and what their heaps tell for some models.
void CompleteCanon(ExifData& data, const ByteSource& file);
/// The size of a JPEG from its frame header where the shooting data have none, and its sides as it is shown.
void CompleteJpegSize(ExifData& data, const ByteSource& file, const ExifOptions& options);
/// Clears fields in which some Canon models keep other things.
void ClearFieldsOfOtherModels(ExifData& data);
/// The number of an EOS-1D file stands in its name only.
void CompleteImageNumber(ExifData& data);
/// Makes `dateTime` and `shootingTime`, which holds the file's time until then, agree.
void CompleteDate(ExifData& data);
/// Sides of raw pictures that were turned since shooting. Also for a file that does not exist.
void CompleteSize(ExifData& data);

}  // namespace ml::metadata
