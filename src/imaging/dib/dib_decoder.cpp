#include "imaging/dib/dib_decoder.h"

#include <algorithm>
#include <cstdlib>

namespace ml::imaging {
namespace {

using metadata::ByteView;

constexpr std::size_t kHeaderSize = 40;

struct DibHeader {
  std::uint32_t size = 0;
  long long width = 0;
  long long height = 0;
  bool topDown = false;
  int bits = 0;
};

DibHeader ReadHeader(ByteView format) {
  if (format.Size() < kHeaderSize) Refuse("The bitmap header is cut short");
  DibHeader header;
  header.size = format.readLong(0);
  header.width = static_cast<std::int32_t>(format.readLong(4));
  const long long height = static_cast<std::int32_t>(format.readLong(8));
  header.topDown = height < 0;
  header.height = std::abs(height);
  header.bits = format.readShort(14);
  if (header.bits != 8 && header.bits != 16 && header.bits != 24 && header.bits != 32) {
    Refuse("Bitmaps of this depth are not read");
  }
  CheckPixelCount(header.width, header.height, kMaxPixelsWhole);
  return header;
}

void Put(std::byte* out, unsigned red, unsigned green, unsigned blue) {
  out[0] = static_cast<std::byte>(red);
  out[1] = static_cast<std::byte>(green);
  out[2] = static_cast<std::byte>(blue);
}

/// Five bits spread over eight.
constexpr unsigned Spread(unsigned value) { return (value & 31) << 3 | (value & 31) >> 2; }

void ConvertRow(ByteView row, int bits, ByteView palette, std::byte* out, std::size_t width) {
  for (std::size_t x = 0; x < width; ++x, out += 3) {
    if (bits == 16) {
      const unsigned pixel = row.readShort(x * 2);
      Put(out, Spread(pixel >> 10), Spread(pixel >> 5), Spread(pixel));
      continue;
    }
    const auto& colours = bits == 8 ? palette : row;
    const std::size_t at = bits == 8 ? row.readByte(x) * std::size_t{4} : x * static_cast<std::size_t>(bits / 8);
    // An index past the palette is black.
    if (at + 3 <= colours.Size())
      Put(out, colours.readByte(at + 2), colours.readByte(at + 1), colours.readByte(at));
    else
      Put(out, 0, 0, 0);
  }
}

}  // namespace

DecodedPicture DecodeDib(ByteView format, ByteView pixels) {
  format = format.WithOrder(metadata::ByteOrder::Little);
  pixels = pixels.WithOrder(metadata::ByteOrder::Little);
  const auto header = ReadHeader(format);
  const auto width = static_cast<std::size_t>(header.width), height = static_cast<std::size_t>(header.height);
  const auto rowBytes = (width * static_cast<std::size_t>(header.bits) + 31) / 32 * 4;
  const auto rows = std::min(height, pixels.Size() / rowBytes);
  if (rows == 0) Refuse("The bitmap has no pixels");

  const auto palette = header.size < format.Size() ? format.From(header.size) : ByteView();
  DecodedPicture result{MakeUndecoded(static_cast<int>(width), static_cast<int>(height)), static_cast<int>(width),
                        static_cast<int>(height), rows < height};
  for (std::size_t i = 0; i < rows; ++i) {
    const auto y = static_cast<int>(header.topDown ? i : height - 1 - i);
    ConvertRow(pixels.Sub(i * rowBytes, rowBytes), header.bits, palette, result.pixels.Row(y), width);
  }
  return result;
}

}  // namespace ml::imaging
