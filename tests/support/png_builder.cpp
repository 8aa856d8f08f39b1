#include "support/png_builder.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>

#include "support/byte_string.h"
#include "support/indexed_picture.h"

namespace ml::test {
namespace {

std::string Deflate(std::string_view data) {
  auto size = compressBound(static_cast<uLong>(data.size()));
  std::string out(size, '\0');
  // The quick level: what is compressed well is of no interest here.
  if (compress2(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(data.data()),
                static_cast<uLong>(data.size()), 1) != Z_OK) {
    throw std::runtime_error("compress2");
  }
  out.resize(size);
  return out;
}

int ColourType(PngColours colours) {
  switch (colours) {
    case PngColours::Grey:
      return 0;
    case PngColours::Rgb:
      return 2;
    case PngColours::Palette:
      return 3;
    case PngColours::RgbWithAlpha:
      return 6;
  }
  return 0;
}

int AlphaAt(const Picture& picture, std::size_t pixel) {
  const auto x = static_cast<int>(pixel % static_cast<std::size_t>(picture.width));
  return std::min(255, 510 - 510 * x / picture.width);
}

/// Rows without filter, each behind its filter byte.
std::string Rows(const Picture& picture, const PngEncoding& encoding) {
  const auto indexed = encoding.colours == PngColours::Palette ? ToIndexed(picture) : IndexedPicture{};
  ByteString out(Endian::Big);
  const auto put = [&](char sample) {
    const auto value = static_cast<unsigned char>(sample);
    encoding.bits == 16 ? out.Short(value * 257U) : out.Byte(value);
  };
  const auto width = static_cast<std::size_t>(picture.width);
  for (std::size_t pixel = 0; pixel < picture.rgb.size() / 3; ++pixel) {
    if (pixel % width == 0) out.Byte(0);
    if (encoding.colours == PngColours::Palette) {
      put(indexed.pixels[pixel]);
    } else if (encoding.colours == PngColours::Grey) {
      put(picture.rgb[pixel * 3 + 1]);
    } else {
      for (std::size_t i = 0; i < 3; ++i) put(picture.rgb[pixel * 3 + i]);
      if (encoding.colours == PngColours::RgbWithAlpha) put(static_cast<char>(AlphaAt(picture, pixel)));
    }
  }
  return out.Take();
}

}  // namespace

std::string PngChunk(std::string_view type, std::string_view data) {
  const auto covered = std::string(type).append(data);
  const auto sum = crc32(0, reinterpret_cast<const Bytef*>(covered.data()), static_cast<uInt>(covered.size()));
  return ByteString(Endian::Big).Long(data.size()).Text(covered).Long(sum).Take();
}

std::string PngText(std::string_view keyword, std::string_view text) {
  return PngChunk("tEXt", std::string(keyword) + '\0' + std::string(text));
}
std::string PngCompressedText(std::string_view keyword, std::string_view text) {
  return PngChunk("zTXt", std::string(keyword) + std::string(2, '\0') + Deflate(text));
}
std::string PngInternationalText(std::string_view keyword, std::string_view text, Compression compression) {
  const bool deflate = compression == Compression::Deflate;
  return PngChunk("iTXt", std::string(keyword) + '\0' + (deflate ? '\1' : '\0') + std::string(3, '\0') +
                              (deflate ? Deflate(text) : std::string(text)));
}
std::string PngProfile(std::string_view name, std::string_view profile) {
  return PngChunk("iCCP", std::string(name) + std::string(2, '\0') + Deflate(profile));
}

std::string EncodePng(const Picture& picture, const PngEncoding& encoding) {
  ByteString header(Endian::Big);
  header.Long(static_cast<std::uint64_t>(picture.width)).Long(static_cast<std::uint64_t>(picture.height));
  header.Byte(static_cast<std::uint64_t>(encoding.bits));
  header.Byte(static_cast<std::uint64_t>(ColourType(encoding.colours))).Zeros(3);
  std::string out = "\x89PNG\r\n\x1a\n" + PngChunk("IHDR", header.Bytes()) + encoding.before;
  if (encoding.colours == PngColours::Palette) out += PngChunk("PLTE", ToIndexed(picture).palette);
  const auto data = Deflate(Rows(picture, encoding));
  const auto piece = (data.size() + encoding.dataChunks - 1) / encoding.dataChunks;
  for (std::size_t at = 0; at < data.size(); at += piece) out += PngChunk("IDAT", data.substr(at, piece));
  return out + encoding.after + PngChunk("IEND", {});
}

}  // namespace ml::test
