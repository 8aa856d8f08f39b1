#include "imaging/dib/bmp_turn.h"

#include <algorithm>

#include "imaging/decoded_picture.h"
#include "imaging/dib/bmp_pixels.h"
#include "imaging/dib/bmp_rle.h"
#include "imaging/messages.h"
#include "metadata/bmp_size.h"
#include "metadata/byte_view.h"
#include "metadata/byte_writer.h"

namespace ml::imaging {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::size_t kFileSizeAt = 2, kPixelsAt = 10, kHeaderAt = 14;  ///< in the file
constexpr std::size_t kOldHeader = 12, kOldWidthAt = 4, kOldHeightAt = 6;
constexpr std::size_t kWidthAt = 4, kHeightAt = 8, kCompressionAt = 16, kImageSizeAt = 20, kResolutionAt = 24;
constexpr std::size_t kOs2Header = 64;  ///< its compressions have other numbers
constexpr std::size_t kProfileHeader = 124, kProfileOffsetAt = 112;
constexpr std::uint32_t kPlain = 0, kRle8 = 1, kRle4 = 2, kMasks = 3, kMasksWithAlpha = 6;

struct Bmp {
  std::size_t header = 0;  ///< bytes of the information header
  std::size_t width = 0, height = 0;
  int bits = 0;
  bool topDown = false;
  std::uint32_t compression = kPlain;
  std::size_t pixels = 0;     ///< where they begin in the file
  std::size_t pixelsEnd = 0;  ///< where they end
  bool Packed() const { return compression == kRle8 || compression == kRle4; }
  bool Holds(std::size_t at, std::size_t size) const { return header >= at + size; }
};

bool KnownDepth(int bits) {
  constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32};
  return std::ranges::find(kDepths, bits) != std::end(kDepths);
}

bool KnownCompression(const Bmp& bmp) {
  if (bmp.compression == kRle8) return bmp.bits == 8;
  if (bmp.compression == kRle4) return bmp.bits == 4;
  const bool masks = bmp.compression == kMasks || bmp.compression == kMasksWithAlpha;
  return bmp.compression == kPlain || (masks && bmp.header != kOs2Header && bmp.bits >= 16);
}

Bmp ReadBmp(metadata::ByteView file) {
  const auto size = metadata::ReadBmpSize(metadata::MemorySource(file.Bytes()));
  if (!size) Refuse("This is no bitmap");
  CheckPixelCount(size->width, size->height, kMaxPixelsWhole);
  Bmp bmp{.header = file.readLong(kHeaderAt),
          .width = static_cast<std::size_t>(size->width),
          .height = static_cast<std::size_t>(size->height),
          .bits = size->bitsPerPixel,
          .topDown = size->topDown,
          .pixels = file.readLong(kPixelsAt)};
  if (bmp.Holds(kCompressionAt, 4)) bmp.compression = file.readLong(kHeaderAt + kCompressionAt);
  if (!KnownDepth(bmp.bits) || !KnownCompression(bmp)) Refuse("Bitmaps of this kind are not turned");
  if (bmp.pixels < kHeaderAt + bmp.header) Refuse("The bitmap has no place for its pixels");
  std::size_t stored = BmpRowBytes(bmp.width, bmp.bits) * bmp.height;
  if (bmp.Packed()) {
    stored = bmp.Holds(kImageSizeAt, 4) ? file.readLong(kHeaderAt + kImageSizeAt) : 0;
    if (stored == 0) stored = file.From(bmp.pixels).Size();
  }
  bmp.pixelsEnd = bmp.pixels + file.Sub(bmp.pixels, stored).Size();
  return bmp;
}

Bytes TurnRows(std::span<const std::byte> rows, const Bmp& bmp, Turn turn) {
  const bool swaps = turn != Turn::half;
  const auto newWidth = swaps ? bmp.height : bmp.width, newHeight = swaps ? bmp.width : bmp.height;
  const auto oldRow = BmpRowBytes(bmp.width, bmp.bits), newRow = BmpRowBytes(newWidth, bmp.bits);
  Bytes out(newRow * newHeight);
  const auto stored = [&](std::size_t y, std::size_t height) { return bmp.topDown ? y : height - 1 - y; };
  for (std::size_t y = 0; y < newHeight; ++y) {
    auto* to = out.data() + stored(y, newHeight) * newRow;
    for (std::size_t x = 0; x < newWidth; ++x) {
      // Where the pixel comes from.
      const auto oldX = turn == Turn::cw90 ? y : turn == Turn::half ? bmp.width - 1 - x : bmp.width - 1 - y;
      const auto oldY = turn == Turn::cw90 ? bmp.height - 1 - x : turn == Turn::half ? bmp.height - 1 - y : x;
      CopyPixel(rows.data() + stored(oldY, bmp.height) * oldRow, oldX, to, x, bmp.bits);
    }
  }
  return out;
}

void PutNumber(Bytes& file, std::size_t at, std::size_t width, std::uint32_t value) {
  for (std::size_t i = 0; i < width; ++i) file[at + i] = static_cast<std::byte>(value >> (8 * i) & 0xff);
}

/// Sides and resolutions change places; the height keeps its sign, which tells the order of the rows.
void SwapSides(Bytes& file, const Bmp& bmp) {
  const auto width = static_cast<std::uint32_t>(bmp.height), height = static_cast<std::uint32_t>(bmp.width);
  if (bmp.header == kOldHeader) {
    PutNumber(file, kHeaderAt + kOldWidthAt, 2, width);
    PutNumber(file, kHeaderAt + kOldHeightAt, 2, height);
    return;
  }
  PutNumber(file, kHeaderAt + kWidthAt, 4, width);
  PutNumber(file, kHeaderAt + kHeightAt, 4, bmp.topDown ? 0U - height : height);
  if (!bmp.Holds(kResolutionAt, 8)) return;
  const auto across = file.begin() + kHeaderAt + kResolutionAt;
  std::swap_ranges(across, across + 4, across + 4);
}

/// What depends on how many bytes the pixels take.
void SetSizes(Bytes& file, const Bmp& bmp, std::uint32_t pixelBytes) {
  const metadata::ByteView view(file, metadata::ByteOrder::Little);
  const auto oldBytes = static_cast<std::uint32_t>(bmp.pixelsEnd - bmp.pixels);
  if (bmp.Holds(kImageSizeAt, 4) && (view.readLong(kHeaderAt + kImageSizeAt) != 0 || bmp.Packed())) {
    PutNumber(file, kHeaderAt + kImageSizeAt, 4, pixelBytes);
  }
  if (bmp.Packed()) PutNumber(file, kHeaderAt + kCompressionAt, 4, kPlain);
  if (bmp.header >= kProfileHeader) {
    const auto profile = view.readLong(kHeaderAt + kProfileOffsetAt);
    const bool behind = profile != 0 && std::size_t{profile} + kHeaderAt >= bmp.pixelsEnd;
    if (behind) PutNumber(file, kHeaderAt + kProfileOffsetAt, 4, profile - oldBytes + pixelBytes);
  }
  PutNumber(file, kFileSizeAt, 4, static_cast<std::uint32_t>(file.size()));
}

}  // namespace

std::vector<std::byte> TurnBmp(std::span<const std::byte> file, Turn turn) {
  Bytes out(file.begin(), file.end());
  if (turn == Turn::None) return out;
  Bmp bmp;
  try {
    bmp = ReadBmp(metadata::ByteView(file, metadata::ByteOrder::Little));
  } catch (metadata::ExifException) {
    Refuse(messages::kBitmapCutShort);
  }
  auto rows = file.subspan(bmp.pixels, bmp.pixelsEnd - bmp.pixels);
  Bytes unpacked;
  if (bmp.Packed()) {
    unpacked = UnpackRle(rows, {bmp.width, bmp.height, bmp.bits, BmpRowBytes(bmp.width, bmp.bits)});
    rows = unpacked;
  }
  const auto turned = TurnRows(rows, bmp, turn);
  const auto place = out.begin() + static_cast<std::ptrdiff_t>(bmp.pixels);
  out.erase(place, out.begin() + static_cast<std::ptrdiff_t>(bmp.pixelsEnd));
  out.insert(out.begin() + static_cast<std::ptrdiff_t>(bmp.pixels), turned.begin(), turned.end());
  if (turn != Turn::half) SwapSides(out, bmp);
  SetSizes(out, bmp, static_cast<std::uint32_t>(turned.size()));
  return out;
}

}  // namespace ml::imaging
