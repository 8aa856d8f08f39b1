#pragma once

namespace ml::imaging::messages {

inline constexpr char kTiffInvalid[] = "Invalid TIFF";
inline constexpr char kTiffCompressed[] = "Only reads uncompressed";
inline constexpr char kTiffBits[] = "Unexpected BitsPerSample";
inline constexpr char kTiffBitsSeek[] = "fseek error in BitsPerSample";
inline constexpr char kTiffColours[] = "Only reads grey and RGB images in strips";
inline constexpr char kTiffSize[] = "The image is too large or has no size";
inline constexpr char kTiffCut[] = "The file ends before the image does";

}  // namespace ml::imaging::messages
