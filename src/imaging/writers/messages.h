#pragma once

/// Sentences of the writers. A path follows where a sentence ends in a line break.
namespace ml::imaging::messages {

inline constexpr char kWriteTiff[] = "ERROR: cannot write to TIFF file:\n";
inline constexpr char kTiffDepth[] = "ERROR: WriteTIFF() depth must be 1 or 2";
inline constexpr char kTiffChannels[] = "ERROR: WriteTIFF() channels must be 1 or 3";
inline constexpr char kDiskFull[] = "Disk may be full";
inline constexpr char kTiffRow[] = "\nRow %d of %d, width: %d, bytesPerPixel: %d, strip: %d";
inline constexpr char kTiffRowCaption[] = "Debug Message";
inline constexpr char kTooLong[] = "The picture is too large for this kind of file";

inline constexpr char kWriteJpeg[] = "ERROR: cannot write to JPEG file:\n";
inline constexpr char kJpegDepth[] = "A JPEG holds samples of 8 bits only";

inline constexpr char kWritePng[] = "Error writing PNG\n";
inline constexpr char kWriteJp2[] = "ERROR: cannot write to JPEG2000 file:\n";
inline constexpr char kJp2Image[] = "ERROR: JPEG2000 jas_image_create() failed\n";
inline constexpr char kJp2Encode[] = "ERROR: cannot encode JPEG2000 file\n";

}  // namespace ml::imaging::messages
