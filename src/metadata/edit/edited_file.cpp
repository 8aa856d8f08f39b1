#include "metadata/edit/edited_file.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace ml::metadata {

EditedFile::EditedFile(const ByteSource& original) : original_(original), size_(original.Size()) {
  if (size_ > 0) pieces_.push_back({true, 0, size_});
}

std::size_t EditedFile::ReadSome(std::uint64_t offset, std::span<std::byte> out) const {
  std::size_t done = 0;
  std::uint64_t start = 0;  // of the piece in the content
  for (const auto& piece : pieces_) {
    if (done == out.size()) break;
    const auto skip = offset + done - start;
    start += piece.size;
    if (offset + done >= start) continue;
    const auto part = out.subspan(done, std::min<std::uint64_t>(out.size() - done, piece.size - skip));
    if (piece.original) {
      const auto got = original_.ReadSome(piece.position + skip, part);
      done += got;
      if (got != part.size()) return done;  // the file became shorter meanwhile
    } else {
      std::memcpy(part.data(), added_.data() + piece.position + skip, part.size());
      done += part.size();
    }
  }
  return done;
}

std::size_t EditedFile::SplitAt(std::uint64_t position) {
  std::uint64_t start = 0;
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    if (position == start) return i;
    if (position < start + pieces_[i].size) {
      auto rest = pieces_[i];
      const auto head = position - start;
      pieces_[i].size = head;
      rest.position += head;
      rest.size -= head;
      pieces_.insert(pieces_.begin() + static_cast<std::ptrdiff_t>(i) + 1, rest);
      return i + 1;
    }
    start += pieces_[i].size;
  }
  return pieces_.size();
}

void EditedFile::Replace(FileRange range, std::span<const std::byte> bytes) {
  if (range.position > size_ || range.size > size_ - range.position) throw ExifException::OutOfBounds;
  const auto first = SplitAt(range.position);
  const auto last = SplitAt(range.End());
  const auto at = pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(first),
                                pieces_.begin() + static_cast<std::ptrdiff_t>(last));
  size_ -= range.size;
  if (bytes.empty()) return;
  pieces_.insert(at, Piece{false, added_.size(), bytes.size()});
  added_.insert(added_.end(), bytes.begin(), bytes.end());
  size_ += bytes.size();
}

bool EditedFile::Keeps(FileRange range, FileRange originalRange) const {
  if (range.size != originalRange.size) return false;
  std::uint64_t start = 0;
  for (const auto& piece : pieces_) {
    const bool isInside = range.position >= start && range.End() <= start + piece.size;
    if (isInside && piece.original && piece.position + (range.position - start) == originalRange.position) return true;
    start += piece.size;
  }
  return false;
}

std::vector<platform::KeptStretch> EditedFile::Kept() const {
  std::vector<platform::KeptStretch> kept;
  std::uint64_t start = 0;
  for (const auto& piece : pieces_) {
    if (piece.original) kept.push_back({.oldOffset = piece.position, .newOffset = start, .size = piece.size});
    start += piece.size;
  }
  return kept;
}

std::optional<platform::PatchSet> EditedFile::InPlace() const {
  const auto oldSize = original_.Size();
  if (size_ < oldSize) return std::nullopt;
  platform::PatchSet set{.fileSize = oldSize, .patches = {}};
  std::uint64_t start = 0;
  for (const auto& piece : pieces_) {
    const auto begin = start;
    start += piece.size;
    if (piece.original) {
      if (piece.position != begin) return std::nullopt;
      continue;
    }
    const auto bytes = std::span(added_).subspan(piece.position, piece.size);
    const auto inside = begin < oldSize ? std::min(piece.size, oldSize - begin) : 0;
    if (inside > 0) {
      const auto head = bytes.first(inside);
      set.patches.push_back({begin, original_.Read(begin, inside), {head.begin(), head.end()}});
    }
    const auto behind = bytes.subspan(inside);
    set.appended.insert(set.appended.end(), behind.begin(), behind.end());
  }
  return set;
}

bool SameBytes(const ByteSource& first, FileRange firstRange, const ByteSource& second, FileRange secondRange) {
  if (firstRange.size != secondRange.size) return false;
  constexpr std::uint64_t kChunk = std::uint64_t{1} << 16;
  std::vector<std::byte> a, b;
  for (std::uint64_t at = 0; at < firstRange.size; at += a.size()) {
    const auto count = static_cast<std::size_t>(std::min(kChunk, firstRange.size - at));
    a.resize(count);
    b.resize(count);
    if (first.ReadSome(firstRange.position + at, a) != count ||
        second.ReadSome(secondRange.position + at, b) != count) {
      return false;
    }
    if (std::memcmp(a.data(), b.data(), count) != 0) return false;
  }
  return true;
}

}  // namespace ml::metadata
