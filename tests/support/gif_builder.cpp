#include "support/gif_builder.h"

#include <algorithm>
#include <cstdint>

#include "support/byte_string.h"
#include "support/indexed_picture.h"

namespace ml::test {
namespace {

/// Codes of nine bits throughout: the table is cleared before it would need longer ones, so nothing is
/// compressed.
std::string UncompressedCodes(const std::string& pixels) {
  constexpr std::uint32_t kClear = 256, kEnd = 257;
  constexpr std::size_t kRun = 250;
  std::string out;
  std::uint32_t buffer = 0;
  int held = 0;
  const auto put = [&](std::uint32_t code) {
    buffer |= code << held;
    for (held += 9; held >= 8; held -= 8, buffer >>= 8) out += static_cast<char>(buffer & 0xff);
  };
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    if (at % kRun == 0) put(kClear);
    put(static_cast<unsigned char>(pixels[at]));
  }
  put(kEnd);
  if (held > 0) out += static_cast<char>(buffer & 0xff);
  return out;
}

std::string SubBlocks(const std::string& data) {
  std::string out;
  for (std::size_t at = 0; at < data.size(); at += 255) {
    const auto size = std::min<std::size_t>(255, data.size() - at);
    out += static_cast<char>(size);
    out.append(data, at, size);
  }
  return out + '\0';
}

}  // namespace

std::string EncodeGif(const std::vector<Picture>& frames) {
  constexpr int kPalette256 = 0xf7, kTenthsOfASecond = 5;
  const auto width = static_cast<std::uint64_t>(frames[0].width), height = static_cast<std::uint64_t>(frames[0].height);
  ByteString out(Endian::Little);
  out.Text("GIF89a").Short(width).Short(height).Byte(kPalette256).Zeros(2).Text(ToIndexed(frames[0]).palette);
  for (const auto& frame : frames) {
    if (frames.size() > 1) out.Text("\x21\xf9\x04").Byte(0).Short(kTenthsOfASecond * 10).Zeros(2);
    out.Text(",").Zeros(4).Short(width).Short(height).Byte(0).Byte(8);
    out.Text(SubBlocks(UncompressedCodes(ToIndexed(frame).pixels)));
  }
  return out.Text(";").Take();
}

}  // namespace ml::test
