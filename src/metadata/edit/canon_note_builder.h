#pragma once

#include "metadata/edit/ifd_builder.h"
#include "metadata/exif_data.h"

namespace ml::metadata {

/// The private note of a Canon camera that says what the record knows, by the words and codes of the camera: settings,
/// focal length, shot information, firmware, image number, owner, body number, custom functions, and the colours. An
/// array of which nothing is known is left out. What a note cannot hold is cut: texts to their fields, times to tenths
/// of a second, stops to 32nds, distances to the unit of the model.
IfdBuilder BuildCanonMakerNote(const ExifData& data, ByteOrder order);

}  // namespace ml::metadata
