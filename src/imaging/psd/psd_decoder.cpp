#include "imaging/psd/psd_decoder.h"

#include <algorithm>
#include <span>

#include "imaging/messages.h"
#include "imaging/psd/psd_layout.h"
#include "imaging/psd/psd_rows.h"

namespace ml::imaging {
namespace {

/// Calls `put` with each pixel of `out` and its sample of `row`: of two bytes the first.
template <class Put>
void ForEachSample(std::span<const std::byte> row, int depth, std::byte* out, Put put) {
  const auto step = static_cast<std::size_t>(depth / 8);
  for (std::size_t i = 0; i < row.size(); i += step, out += 3) put(out, std::to_integer<int>(row[i]));
}

/// Puts one row of one colour channel into the picture. Inks are stored as the light that they let through, black
/// comes last.
void PutRow(std::span<const std::byte> row, const PsdLayout& layout, int channel, std::byte* out) {
  const auto plain = [channel](std::byte* pixel, int sample) { pixel[channel] = static_cast<std::byte>(sample); };
  const auto black = [](std::byte* pixel, int sample) {
    for (int i = 0; i < 3; ++i) {
      pixel[i] = static_cast<std::byte>(Multiply255(std::to_integer<int>(pixel[i]), sample));
    }
  };
  const auto grey = [](std::byte* pixel, int sample) { std::fill_n(pixel, 3, static_cast<std::byte>(sample)); };
  const auto indexed = [&](std::byte* pixel, int sample) {
    for (int i = 0; i < 3; ++i)
      pixel[i] = layout.palette[static_cast<std::size_t>(i) * 256 + static_cast<std::size_t>(sample)];
  };
  if (layout.file.mode == PsdMode::Indexed) {
    ForEachSample(row, layout.file.depth, out, indexed);
  } else if (layout.ColourChannels() == 1) {
    ForEachSample(row, layout.file.depth, out, grey);
  } else if (channel == 3) {
    ForEachSample(row, layout.file.depth, out, black);
  } else {
    ForEachSample(row, layout.file.depth, out, plain);
  }
}

/// The number of rows that were whole.
int DecodeRows(PsdRows& rows, const PsdLayout& layout, PixelBuffer& pixels) {
  int whole = 0;
  std::vector<std::byte> row(layout.RowBytes());
  for (int channel = 0; channel < layout.ColourChannels(); ++channel) {
    for (int y = 0; y < layout.file.height; ++y) {
      if (!rows.Next(row)) continue;
      PutRow(row, layout, channel, pixels.Row(y));
      ++whole;
    }
  }
  return whole;
}

}  // namespace

DecodedPicture DecodePsd(const metadata::ByteSource& source) {
  try {
    const auto layout = ReadPsdLayout(source);
    PsdRows rows(source, layout);
    DecodedPicture result{MakeUndecoded(layout.file.width, layout.file.height), layout.file.width, layout.file.height};
    const int whole = DecodeRows(rows, layout, result.pixels);
    if (whole == 0) Refuse(messages::kFileEndsEarly);
    result.damaged = whole < layout.file.height * layout.ColourChannels();
    return result;
  } catch (metadata::ExifException) {
    Refuse(messages::kFileEndsEarly);
  }
}

}  // namespace ml::imaging
