#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/byte_string.h"

/// NEF files of sensor samples, in all the ways in which cameras store them.
namespace ml::test {

enum class NefStorage {
  Packed,          ///< 12 bits a sample, nothing between them
  PackedTens,      ///< a zero byte behind ten of them
  Lossy,           ///< coded differences of curve values
  LossyWithSplit,  ///< the same, with another code for the lower half
  Lossless         ///< coded differences of samples
};

/// Where the curve of coded data stands.
enum class NefCurvePlace {
  Fixed,      ///< where the camera always puts it, without any maker note
  BareNote,   ///< as tag 0x8C of a note that is a bare directory
  HeadedNote  ///< as tag 0x96 of a note with a TIFF header of its own
};

struct NefFile {
  std::string model = "NIKON D1H";
  int width = 46, height = 26;  ///< of the data
  int statedWidth = 0;          ///< 0: the same
  Endian order = Endian::Big;
  NefStorage storage = NefStorage::Packed;
  NefCurvePlace place = NefCurvePlace::Fixed;
  int strips = 1;          ///< of packed data
  int bitsPerSample = 12;  ///< as stated
  bool inFirstDirectory = false;
};

struct BuiltNef {
  std::string file;
  std::vector<std::uint16_t> samples;  ///< what is to be read from it: coded data cannot hold all values
  int width = 0;                       ///< of those; the last three columns of packed tens are not read
};

/// `samples` row by row, 0..4095.
BuiltNef BuildNef(const NefFile& nef, const std::vector<std::uint16_t>& samples);

/// Samples of an uneven surface with edges and noise; the same seed gives the same.
std::vector<std::uint16_t> NefScene(int width, int height, unsigned seed);

}  // namespace ml::test
