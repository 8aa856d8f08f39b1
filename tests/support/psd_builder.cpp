#include "support/psd_builder.h"

#include <vector>

#include "support/byte_string.h"
#include "support/indexed_picture.h"

namespace ml::test {
namespace {

struct Mode {
  int number;
  std::size_t channels;
};
Mode ModeOf(PsdColours colours) {
  switch (colours) {
    case PsdColours::Grey:
      return {1, 1};
    case PsdColours::Indexed:
      return {2, 1};
    case PsdColours::Rgb:
      return {3, 3};
    case PsdColours::Cmyk:
      return {4, 4};
  }
  return {};
}

/// All samples of a channel, 0 to 255. Ink is stored inverted, so cyan looks like red, and no black is 255.
std::string Channel(const Picture& picture, PsdColours colours, std::size_t channel) {
  if (channel >= (colours == PsdColours::Cmyk ? 3 : ModeOf(colours).channels)) {
    return std::string(picture.rgb.size() / 3, '\xff');
  }
  if (colours == PsdColours::Indexed) return ToIndexed(picture).pixels;
  std::string out;
  for (std::size_t at = colours == PsdColours::Grey ? 1 : channel; at < picture.rgb.size(); at += 3)
    out += picture.rgb[at];
  return out;
}

std::string PackBits(const std::string& row) {
  std::string out;
  for (std::size_t at = 0; at < row.size();) {
    std::size_t same = 1;
    while (same < 128 && at + same < row.size() && row[at + same] == row[at]) ++same;
    if (same > 1) {
      out += static_cast<char>(257 - same);
      out += row[at];
      at += same;
      continue;
    }
    std::size_t literal = 1;
    while (literal < 128 && at + literal < row.size() && row[at + literal] != row[at + literal - 1]) ++literal;
    out += static_cast<char>(literal - 1);
    out.append(row, at, literal);
    at += literal;
  }
  return out;
}

std::vector<std::string> Rows(const Picture& picture, const PsdEncoding& encoding, std::size_t channels) {
  std::vector<std::string> rows;
  const auto width = static_cast<std::size_t>(picture.width);
  for (std::size_t channel = 0; channel < channels; ++channel) {
    const auto samples = Channel(picture, encoding.colours, channel);
    for (std::size_t at = 0; at < samples.size(); at += width) {
      std::string row;
      for (const char sample : samples.substr(at, width))
        row.append(static_cast<std::size_t>(encoding.bits / 8), sample);
      rows.push_back(encoding.packBits ? PackBits(row) : row);
    }
  }
  return rows;
}

/// All reds, then all greens, then all blues.
std::string PlanarPalette(const std::string& palette) {
  std::string out;
  for (std::size_t channel = 0; channel < 3; ++channel) {
    for (std::size_t at = channel; at < palette.size(); at += 3) out += palette[at];
  }
  return out;
}

}  // namespace

std::string EncodePsd(const Picture& picture, const PsdEncoding& encoding) {
  const auto mode = ModeOf(encoding.colours);
  const auto channels = mode.channels + (encoding.extraChannel ? 1 : 0);
  ByteString out(Endian::Big);
  out.Text("8BPS").Short(1).Zeros(6).Short(channels);
  out.Long(static_cast<std::uint64_t>(picture.height)).Long(static_cast<std::uint64_t>(picture.width));
  out.Short(static_cast<std::uint64_t>(encoding.bits)).Short(static_cast<std::uint64_t>(mode.number));
  const auto palette =
      encoding.colours == PsdColours::Indexed ? PlanarPalette(ToIndexed(picture).palette) : std::string();
  out.Long(palette.size()).Text(palette).Long(encoding.resources.size()).Text(encoding.resources).Long(0);
  const auto rows = Rows(picture, encoding, channels);
  out.Short(encoding.packBits ? 1 : 0);
  if (encoding.packBits) {
    for (const auto& row : rows) out.Short(row.size());
  }
  for (const auto& row : rows) out.Text(row);
  return out.Take();
}

}  // namespace ml::test
