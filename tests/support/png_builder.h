#pragma once

#include <string>
#include <string_view>

#include "support/sample_photo.h"

/// PNG files, chunk by chunk.
namespace ml::test {

/// With length and checksum.
std::string PngChunk(std::string_view type, std::string_view data);
std::string PngText(std::string_view keyword, std::string_view text);            ///< tEXt
std::string PngCompressedText(std::string_view keyword, std::string_view text);  ///< zTXt
enum class Compression { None, Deflate };
/// iTXt with an empty language.
std::string PngInternationalText(std::string_view keyword, std::string_view text, Compression compression);
std::string PngProfile(std::string_view name, std::string_view profile);  ///< iCCP

enum class PngColours { Rgb, RgbWithAlpha, Grey, Palette };
struct PngEncoding {
  PngColours colours = PngColours::Rgb;
  int bits = 8;                ///< a sample; 16 not with a palette
  std::string before{};        ///< ready chunks between header and pixels
  std::string after{};         ///< ready chunks behind the pixels
  std::size_t dataChunks = 1;  ///< pieces of the compressed pixels
};
/// An alpha channel is opaque on the left half, and from there fades to nothing on the right.
std::string EncodePng(const Picture& picture, const PngEncoding& encoding = {});

}  // namespace ml::test
