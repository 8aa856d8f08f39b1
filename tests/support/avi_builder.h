#pragma once

#include <string>
#include <vector>

#include "support/sample_photo.h"

namespace ml::test {

enum class AviFrames {
  MotionJpeg,            ///< MJPG without Huffman tables, as cameras store it
  MotionJpegWithTables,  ///< MJPG, each frame a whole JPEG
  Dib,                   ///< 24 bits without compression
  Unknown,               ///< a codec that nobody has
};
struct AviEncoding {
  AviFrames frames = AviFrames::MotionJpeg;
  bool sound = false;  ///< a second stream, with a piece before each frame
  std::string date{};  ///< "SAT MAY 17 10:11:12 2003", for the IDIT chunk
};
/// Fifteen frames a second. All pictures have the size of the first.
std::string EncodeAvi(const std::vector<Picture>& pictures, const AviEncoding& encoding = {});

/// `jpeg` without its DHT segments.
std::string WithoutHuffmanTables(const std::string& jpeg);

}  // namespace ml::test
