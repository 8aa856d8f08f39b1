#pragma once

#include <string>
#include <string_view>

#include "support/tiff_builder.h"

/// JPEG files put together byte by byte.
namespace ml::test {

/// What ExifPayload writes; empty and 0 leave the field out.
struct ExifFields {
  bool bigEndian = false;
  std::string make{}, model{};
  std::string dateTime{};   ///< "2003:05:17 10:11:12", into tags 306 and 36867
  int orientation = 0;      ///< tag 274 as stored, 1..8
  std::string thumbnail{};  ///< a JPEG stream for the second directory
};

/// Two directories and an EXIF directory as a camera writes them, for more tags.
TiffBuilder ExifDirectories(const ExifFields& fields);
/// The TIFF block that they make.
std::string TiffBlock(const ExifFields& fields);
/// The payload of an APP1 segment: the name and the block.
std::string ExifPayload(const ExifFields& fields);

/// `marker` is the second byte of the marker.
std::string JpegSegment(int marker, std::string_view payload);
std::string ExifSegment(const TiffBuilder& tiff);
/// APP13 with ready resources, of which there may be none.
std::string ResourceSegment(std::string_view resources);
std::string XmpSegment(std::string_view packet);
/// The profile cut into `count` APP2 segments of about the same size.
std::string IccSegments(std::string_view profile, std::size_t count = 1);
std::string CommentSegment(std::string_view text);

/// `jpeg` with ready segments behind its start of image.
std::string InsertSegments(std::string_view jpeg, std::string_view segments);
/// The usual case of the above.
std::string WithExif(std::string_view jpeg, const ExifFields& fields);

/// `jpeg` with another size in its frame header, so that it promises pixels which it does not hold.
std::string WithClaimedSize(std::string jpeg, int width, int height);

}  // namespace ml::test
