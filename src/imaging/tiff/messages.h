#pragma once

namespace ml::imaging::messages {

inline constexpr char kTiffInvalid[] = "Invalid TIFF";
inline constexpr char kTiffCompressed[] = "Only reads uncompressed";
inline constexpr char kTiffBits[] = "Unexpected BitsPerSample";
inline constexpr char kTiffBitsSeek[] = "fseek error in BitsPerSample";
inline constexpr char kTiffColours[] = "Only reads grey and RGB images in strips";
inline constexpr char kTiffSize[] = "The image is too large or has no size";
inline constexpr char kTiffCut[] = "The file ends before the image does";
inline constexpr char kTiffLibrary[] = "The TIFF library cannot be used";
inline constexpr char kTiffNotTurned[] = "Pictures that are stored in this way cannot be turned";
inline constexpr char kTiffLoop[] = "The directories do not end";
inline constexpr char kTiffTooLarge[] = "The turned file would be too large";
inline constexpr char kTiffReadBack[] = "The turned pictures do not read back as they were made";
inline constexpr char kTiffTooManyEntries[] = "a directory would have more entries than are read";

}  // namespace ml::imaging::messages
