#include "support/bmp_builder.h"

#include "support/byte_string.h"
#include "support/indexed_picture.h"

namespace ml::test {

std::string DibHeader(const Picture& picture, const BmpEncoding& encoding) {
  const bool palette = encoding.colours == BmpColours::Palette;
  const int height = encoding.rows == RowOrder::TopDown ? -picture.height : picture.height;
  ByteString out(Endian::Little);
  out.Long(40).Long(static_cast<std::uint64_t>(picture.width)).Long(static_cast<std::uint64_t>(height));
  out.Short(1).Short(palette ? 8 : 24).Long(0).Long(DibRows(picture, encoding).size());
  out.Long(2835).Long(2835).Long(palette ? 256 : 0).Long(0);
  if (palette) {
    const auto colours = ToIndexed(picture).palette;
    for (std::size_t at = 0; at < colours.size(); at += 3) {
      out.Text(std::string{colours[at + 2], colours[at + 1], colours[at], '\0'});
    }
  }
  return out.Take();
}

std::string DibRows(const Picture& picture, const BmpEncoding& encoding) {
  const bool palette = encoding.colours == BmpColours::Palette;
  const auto indexed = palette ? ToIndexed(picture) : IndexedPicture{};
  const auto width = static_cast<std::size_t>(picture.width);
  ByteString out(Endian::Little);
  for (int i = 0; i < picture.height; ++i) {
    const auto y = static_cast<std::size_t>(encoding.rows == RowOrder::TopDown ? i : picture.height - 1 - i);
    if (palette) {
      out.Text(indexed.pixels.substr(y * width, width)).Align(4);
      continue;
    }
    for (std::size_t at = y * width * 3; at < (y + 1) * width * 3; at += 3) {
      out.Text(std::string{picture.rgb[at + 2], picture.rgb[at + 1], picture.rgb[at]});
    }
    out.Align(4);
  }
  return out.Take();
}

std::string EncodeBmp(const Picture& picture, const BmpEncoding& encoding) {
  constexpr std::size_t kFileHeader = 14;
  const auto header = DibHeader(picture, encoding), rows = DibRows(picture, encoding);
  ByteString out(Endian::Little);
  out.Text("BM").Long(kFileHeader + header.size() + rows.size()).Long(0).Long(kFileHeader + header.size());
  return out.Text(header).Text(rows).Take();
}

}  // namespace ml::test
