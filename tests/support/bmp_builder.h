#pragma once

#include <string>

#include "support/sample_photo.h"

namespace ml::test {

enum class BmpColours { Rgb, Palette };
enum class RowOrder { BottomUp, TopDown };
struct BmpEncoding {
  BmpColours colours = BmpColours::Rgb;
  RowOrder rows = RowOrder::BottomUp;
};
/// Header of 40 bytes, with the palette behind it.
std::string DibHeader(const Picture& picture, const BmpEncoding& encoding = {});
/// Blue, green and red or palette indices, rows padded to four bytes.
std::string DibRows(const Picture& picture, const BmpEncoding& encoding = {});
/// A file of both.
std::string EncodeBmp(const Picture& picture, const BmpEncoding& encoding = {});

}  // namespace ml::test
