#include "imaging/jpeg/jpeg_decoder.h"

#include <algorithm>
#include <array>

#include "imaging/jpeg/jpeg_reader.h"
#include "imaging/messages.h"

namespace ml::imaging {
namespace {

constexpr int kEighths = 8;

int Scaled(int side, int eighths) { return (side * eighths + kEighths - 1) / kEighths; }

/// Cyan, magenta, yellow and black, stored inverted if an Adobe program wrote them, to red, green and blue.
void ConvertCmykRow(const std::uint8_t* in, PixelBuffer& pixels, int y, bool inverted) {
  auto* out = reinterpret_cast<std::uint8_t*>(pixels.Row(y));
  const int red = pixels.order == PixelOrder::Rgb ? 0 : 2;
  const auto light = [&](int sample) { return inverted ? sample : 255 - sample; };
  for (int x = 0; x < pixels.width; ++x, in += 4, out += 3) {
    const int black = light(in[3]);
    out[red] = static_cast<std::uint8_t>(Multiply255(light(in[0]), black));
    out[1] = static_cast<std::uint8_t>(Multiply255(light(in[1]), black));
    out[2 - red] = static_cast<std::uint8_t>(Multiply255(light(in[2]), black));
  }
}

/// Refuses what would take too much memory or time at this scale.
void CheckSize(const JpegHeader& header, int eighths) {
  const auto pixels = static_cast<long long>(header.width) * header.height;
  if (pixels > (header.multipleScans ? kMaxPixelsWhole : kMaxPixelsScaled) ||
      pixels * eighths * eighths > kMaxPixelsWhole * kEighths * kEighths) {
    Refuse(messages::kPictureTooLarge);
  }
}

/// Decodes all rows; false if the library gave up, the rows so far stay.
bool ReadAllRows(JpegReader& reader, const JpegHeader& header, PixelBuffer& pixels) {
  std::vector<std::uint8_t> inks(header.cmyk ? static_cast<std::size_t>(pixels.width) * 4 : 0);
  std::array<std::uint8_t*, 8> rows{};
  for (int y = 0; y < pixels.height; y = reader.RowsDone()) {
    const int count = header.cmyk ? 1 : std::min(static_cast<int>(rows.size()), pixels.height - y);
    for (int i = 0; i < count; ++i) {
      rows[static_cast<std::size_t>(i)] =
          header.cmyk ? inks.data() : reinterpret_cast<std::uint8_t*>(pixels.Row(y + i));
    }
    if (!reader.ReadRows(rows.data(), count)) return false;
    if (header.cmyk) ConvertCmykRow(inks.data(), pixels, y, header.invertedInks);
  }
  return true;
}

}  // namespace

int LeastCoveringEighths(int width, int height, int targetWidth, int targetHeight) {
  int eighths = 1;
  while (eighths < kEighths && (Scaled(width, eighths) < targetWidth || Scaled(height, eighths) < targetHeight)) {
    ++eighths;
  }
  return eighths;
}

int HalvedEighths(int width, int height, int boxWidth, int boxHeight) {
  int eighths = kEighths;
  while (eighths > 1 && width % 2 == 0 && height % 2 == 0 && (width / 2 >= boxWidth || height / 2 >= boxHeight)) {
    eighths /= 2, width /= 2, height /= 2;
  }
  return eighths;
}

DecodedJpeg DecodeJpeg(const metadata::ByteSource& source, std::uint64_t offset, const JpegScale& scale,
                       PixelOrder order) {
  JpegReader reader(source, offset);
  JpegHeader header;
  if (!reader.ReadHeader(header)) Refuse(reader.Reason());
  const int eighths = std::clamp(scale(header.width, header.height), 1, kEighths);
  CheckSize(header, eighths);
  const auto colours = order == PixelOrder::Rgb ? JpegOutput::Rgb : JpegOutput::Bgr;
  if (!reader.Start(eighths, header.cmyk ? JpegOutput::Cmyk : colours)) Refuse(reader.Reason());

  DecodedJpeg result{MakePixelBuffer(reader.OutputWidth(), reader.OutputHeight(), order), header.width, header.height};
  const bool complete = ReadAllRows(reader, header, result.pixels);
  if (!complete && reader.RowsDone() == 0) Refuse(reader.Reason());
  if (!complete) {
    const auto first = result.pixels.RowBytes() * static_cast<std::size_t>(reader.RowsDone());
    std::fill(result.pixels.data.begin() + static_cast<std::ptrdiff_t>(first), result.pixels.data.end(), kUndecoded);
  }
  result.damaged = !complete || reader.Damaged();
  return result;
}

}  // namespace ml::imaging
