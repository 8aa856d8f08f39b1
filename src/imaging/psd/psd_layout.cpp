#include "imaging/psd/psd_layout.h"

#include <algorithm>

#include "imaging/decoded_picture.h"

namespace ml::imaging {
namespace {

using metadata::ByteOrder;

constexpr std::size_t kHeaderSize = 26;
constexpr int kMaxChannels = 56;  // the format's own limit

bool IsKnownMode(int mode) {
  constexpr std::array kModes{PsdMode::Grey, PsdMode::Indexed, PsdMode::Rgb, PsdMode::Cmyk, PsdMode::Duotone};
  return std::ranges::find(kModes, static_cast<PsdMode>(mode)) != kModes.end();
}

PsdLayout ReadHeader(const metadata::ByteSource& source) {
  const auto bytes = source.Read(0, kHeaderSize);
  const metadata::ByteView view(bytes, ByteOrder::Big);
  const int version = view.readShort(4);
  if (!view.StartsWith("8BPS") || (version != 1 && version != 2)) Refuse("Not a PSD file");
  PsdLayout layout;
  layout.large = version == 2;
  layout.channels = view.readShort(12);
  const long long height = view.readLong(14), width = view.readLong(18);
  CheckPixelCount(width, height, kMaxPixelsWhole);
  layout.width = static_cast<int>(width);
  layout.height = static_cast<int>(height);
  layout.depth = view.readShort(22);
  const int mode = view.readShort(24);
  if (!IsKnownMode(mode)) Refuse("The colour mode of the picture is not read");
  layout.mode = static_cast<PsdMode>(mode);
  const bool sixteen = layout.depth == 16 && layout.mode != PsdMode::Indexed;
  if (layout.depth != 8 && !sixteen) Refuse("The bit depth of the picture is not read");
  if (layout.channels < layout.ColourChannels() || layout.channels > kMaxChannels) Refuse("Channels are missing");
  return layout;
}

void ReadPalette(const metadata::ByteSource& source, std::uint32_t length, PsdLayout& layout) {
  if (length < layout.palette.size()) Refuse("The palette is missing");
  source.ReadExactly(kHeaderSize + 4, layout.palette);
}

}  // namespace

PsdLayout ReadPsdLayout(const metadata::ByteSource& source) {
  auto layout = ReadHeader(source);
  const auto colours = source.ReadNumber(kHeaderSize, 4, ByteOrder::Big);
  if (layout.mode == PsdMode::Indexed) ReadPalette(source, colours, layout);
  const auto resources = kHeaderSize + std::uint64_t{4} + colours;
  const auto layers = resources + 4 + source.ReadNumber(resources, 4, ByteOrder::Big);
  std::uint64_t length = source.ReadNumber(layers, 4, ByteOrder::Big);
  if (layout.large) length = length << 32 | source.ReadNumber(layers + 4, 4, ByteOrder::Big);
  const auto start = layers + (layout.large ? 8U : 4U);
  if (length > source.Size()) throw metadata::ExifException::OutOfBounds;  // a sum could wrap
  layout.picture = start + length;
  return layout;
}

}  // namespace ml::imaging
