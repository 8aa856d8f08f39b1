#include "metadata/bmp_size.h"

#include <limits>

namespace ml::metadata {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kOldHeader = 12;  ///< with 16-bit sides
constexpr std::size_t kNeeded = 16;     ///< bytes of any newer header up to the depth
constexpr std::int64_t kMaxSide = std::numeric_limits<int>::max();

}  // namespace

std::optional<BmpSize> ReadDibSize(ByteView header) try {
  header = header.WithOrder(ByteOrder::Little);
  const auto length = header.readLong(0);
  if (length == kOldHeader) {
    const BmpSize size{header.readShort(4), header.readShort(6), header.readShort(10), false};
    return size.width == 0 || size.height == 0 ? std::nullopt : std::optional(size);
  }
  if (length < kNeeded) return std::nullopt;
  const std::int64_t width = static_cast<std::int32_t>(header.readLong(4));
  const std::int64_t stored = static_cast<std::int32_t>(header.readLong(8));
  const std::int64_t height = stored < 0 ? -stored : stored;
  if (width <= 0 || height == 0 || height > kMaxSide) return std::nullopt;
  return BmpSize{static_cast<int>(width), static_cast<int>(height), header.readShort(14), stored < 0};
} catch (ExifException) {
  return std::nullopt;
}

std::optional<BmpSize> ReadBmpSize(const ByteSource& source) {
  const auto bytes = source.ReadUpTo(0, kFileHeader + kNeeded);
  const ByteView file(bytes, ByteOrder::Little);
  if (!file.StartsWith("BM") || bytes.size() < kFileHeader) return std::nullopt;
  return ReadDibSize(file.From(kFileHeader));
}

}  // namespace ml::metadata
