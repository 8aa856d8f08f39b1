#include "imaging/jp2/code_stream.h"

#include <algorithm>

namespace ml::imaging {
namespace {

using metadata::ByteOrder;

// ISO/IEC 15444-1, annex A.
constexpr std::uint32_t kTilePart = 0xff90;
constexpr std::uint32_t kEnd = 0xffd9;
constexpr std::uint64_t kTilePartHeader = 12;
constexpr std::uint64_t kTilePartLength = 6;  // from its marker on

/// The packet that was cut must be filled up; those behind it need one byte each or none.
constexpr std::uint64_t kMostZeros = std::uint64_t{64} * 1024 * 1024;

/// The first marker of a tile part. Throws ExifException.
std::uint64_t SkipMainHeader(const metadata::ByteSource& source, std::uint64_t start) {
  auto position = start + 2;
  while (source.ReadNumber(position, 2, ByteOrder::Big) != kTilePart) {
    const auto length = source.ReadNumber(position + 2, 2, ByteOrder::Big);
    if (length < 2) throw metadata::ExifException::BadHeader;
    position += 2 + length;
  }
  return position;
}

std::optional<CodeStreamGap> FollowTileParts(const metadata::ByteSource& source, std::uint64_t position,
                                             std::uint64_t end) {
  while (position + kTilePartHeader <= end) {
    if (source.ReadNumber(position, 2, ByteOrder::Big) != kTilePart) return std::nullopt;
    const std::uint64_t length = source.ReadNumber(position + kTilePartLength, 4, ByteOrder::Big);
    if (length == 0) {  // it goes to the end marker
      if (source.ReadNumber(end - 2, 2, ByteOrder::Big) == kEnd) return std::nullopt;
      return CodeStreamGap{end, end + std::min(kMostZeros, end), 0, 0};
    }
    if (length <= kTilePartHeader) return std::nullopt;
    if (length > end - position) {
      const auto zerosEnd = end + std::min(kMostZeros, length - (end - position));
      return CodeStreamGap{end, zerosEnd, position + kTilePartLength, static_cast<std::uint32_t>(zerosEnd - position)};
    }
    position += length;
  }
  const bool whole = position + 2 <= end && source.ReadNumber(position, 2, ByteOrder::Big) == kEnd;
  return whole ? std::nullopt : std::optional(CodeStreamGap{position, position, 0, 0});
}

/// Puts those of the `size` bytes of `value`, big-endian at `field`, into `out` that lie in it; `out` begins at
/// `offset`.
void Patch(std::uint64_t offset, std::span<std::byte> out, std::uint64_t field, std::uint32_t value, unsigned size) {
  for (unsigned i = 0; i < size; ++i) {
    const auto index = field + i - offset;  // wraps before `out`
    if (index < out.size()) out[index] = static_cast<std::byte>(value >> (8 * (size - 1 - i)));
  }
}

}  // namespace

std::optional<CodeStreamGap> FindGap(const metadata::ByteSource& source, const metadata::FileRange& codeStream) {
  try {
    const auto range = metadata::CutToSource(codeStream, source);
    return FollowTileParts(source, SkipMainHeader(source, range.position), range.End());
  } catch (metadata::ExifException) {
    return std::nullopt;
  }
}

std::size_t MendedSource::ReadSome(std::uint64_t offset, std::span<std::byte> out) const {
  if (offset >= Size()) return 0;
  out = out.first(static_cast<std::size_t>(std::min<std::uint64_t>(out.size(), Size() - offset)));
  const auto stored = offset < gap_.dataEnd ? std::min<std::uint64_t>(out.size(), gap_.dataEnd - offset) : 0;
  const auto count = stored > 0 ? source_.ReadSome(offset, out.first(static_cast<std::size_t>(stored))) : 0;
  std::ranges::fill(out.subspan(count), std::byte{0});
  // Two fields of the whole stream, not every byte of it: the zeros may be many.
  if (gap_.lengthField != 0) Patch(offset, out, gap_.lengthField, gap_.partLength, 4);
  Patch(offset, out, gap_.zerosEnd, kEnd, 2);
  return out.size();
}

}  // namespace ml::imaging
