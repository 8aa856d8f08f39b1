#include "metadata/gif_size.h"

namespace ml::metadata {

std::optional<GifSize> ReadGifSize(const ByteSource& source) {
  constexpr std::size_t signature = 6, needed = signature + 4;
  const auto bytes = source.ReadUpTo(0, needed);
  const ByteView header(bytes, ByteOrder::Little);
  if (bytes.size() < needed || (!header.StartsWith("GIF87a") && !header.StartsWith("GIF89a"))) return std::nullopt;
  const GifSize size{header.readShort(signature), header.readShort(signature + 2)};
  return size.width == 0 || size.height == 0 ? std::nullopt : std::optional(size);
}

}  // namespace ml::metadata
