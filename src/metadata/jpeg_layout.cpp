#include "metadata/jpeg_layout.h"

#include <algorithm>

#include "metadata/byte_view.h"
#include "metadata/jpeg_segments.h"

namespace ml::metadata {
namespace {

constexpr std::uint8_t kRestart0 = 0xd0, kTemporary = 0x01, kLastApplication = 0xef;

bool IsApplication(std::uint8_t marker) {
  return (marker >= jpeg_marker::kApp0 && marker <= kLastApplication) || marker == jpeg_marker::kComment;
}

bool HasLength(std::uint8_t marker) {
  return marker != kTemporary && (marker < kRestart0 || marker > jpeg_marker::kStartOfImage);
}

/// Where the next marker stands that is no padding of compressed data.
std::size_t FindMarker(std::span<const std::byte> jpeg, std::size_t from) {
  auto at = jpeg.begin() + static_cast<std::ptrdiff_t>(std::min(from, jpeg.size()));
  while ((at = std::find(at, jpeg.end(), std::byte{0xff})) != jpeg.end()) {
    const auto next = at + 1;
    if (next != jpeg.end() && *next != std::byte{0} && *next != std::byte{0xff}) break;
    at = next;
  }
  return static_cast<std::size_t>(at - jpeg.begin());
}

}  // namespace

JpegLayout ReadJpegLayout(std::span<const std::byte> jpeg) {
  JpegLayout layout;
  layout.end = jpeg.size();
  const ByteView view(jpeg, ByteOrder::Big);
  for (auto at = FindMarker(jpeg, 0); at < jpeg.size(); at = FindMarker(jpeg, at)) {
    const auto marker = view.readByte(at + 1);
    if (marker == jpeg_marker::kEndOfImage) {
      layout.end = at + 2;
      break;
    }
    if (!HasLength(marker)) {
      at += 2;
      continue;
    }
    if (view.Size() - at < 4) break;
    const std::size_t size = std::size_t{2} + view.readShort(at + 2);
    if (size < 4 || size > view.Size() - at) break;
    if (IsApplication(marker)) layout.applications.push_back({at, size});
    at += size;
  }
  return layout;
}

}  // namespace ml::metadata
