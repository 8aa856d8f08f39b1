#include "imaging/psd/psd_rows.h"

#include <algorithm>

#include "imaging/decoded_picture.h"

namespace ml::imaging {

using metadata::ByteOrder;

std::size_t UnpackBits(std::span<const std::byte> packed, std::span<std::byte> out) {
  std::size_t done = 0;
  for (std::size_t i = 0; i < packed.size() && done < out.size();) {
    const auto code = std::to_integer<unsigned>(packed[i++]);
    if (code == 128) continue;
    const auto count = std::min<std::size_t>(code < 128 ? code + 1 : 257 - code, out.size() - done);
    const auto target = out.subspan(done, count);
    if (code < 128) {
      const auto literal = std::min(count, packed.size() - i);
      std::ranges::copy(packed.subspan(i, literal), target.begin());
      i += literal;
      done += literal;
      if (literal < count) break;
    } else {
      if (i == packed.size()) break;
      std::ranges::fill(target, packed[i++]);
      done += count;
    }
  }
  return done;
}

PsdRows::PsdRows(const metadata::ByteSource& source, const PsdLayout& layout)
    : source_(source), entrySize_(layout.file.large ? 4 : 2), position_(layout.file.mergedImage + 2) {
  const auto compression = source.ReadNumber(layout.file.mergedImage, 2, ByteOrder::Big);
  if (compression > 1) Refuse("The compression of the picture is not read");
  packed_ = compression == 1;
  if (!packed_) return;
  const auto rows = static_cast<std::size_t>(layout.file.channels) * static_cast<std::size_t>(layout.file.height);
  lengths_ = source.Read(position_, rows * entrySize_);
  position_ += lengths_.size();
  buffer_.resize(layout.RowBytes() * 2);  // no sane packing takes more
}

std::size_t PsdRows::PackedLength() {
  const metadata::ByteView lengths(lengths_, ByteOrder::Big);
  const auto at = row_++ * entrySize_;
  return entrySize_ == 4 ? lengths.readLong(at) : lengths.readShort(at);
}

bool PsdRows::Next(std::span<std::byte> row) {
  if (!packed_) {
    const auto count = source_.ReadSome(position_, row);
    position_ += row.size();
    return count == row.size();
  }
  const auto length = PackedLength();
  const auto count = source_.ReadSome(position_, std::span(buffer_).first(std::min(length, buffer_.size())));
  position_ += length;
  return UnpackBits(std::span(buffer_).first(count), row) == row.size();
}

}  // namespace ml::imaging
