#pragma once

#include <cstdint>
#include <optional>

#include "metadata/byte_source.h"
#include "metadata/file_range.h"

/// Code streams that were cut off. The library's own way with them (its mode that is not strict) reads memory which
/// it never filled, so that they are made whole before it sees them: what is missing of a tile part becomes zeros,
/// which stand for "no more data here".
namespace ml::imaging {

/// Where a code stream ends before its time; positions in the file.
struct CodeStreamGap {
  std::uint64_t dataEnd = 0;      ///< the last byte of use is before it
  std::uint64_t zerosEnd = 0;     ///< up to here zeros are to follow, then the end marker
  std::uint64_t lengthField = 0;  ///< where `partLength` belongs instead of what stands there; 0: nowhere
  std::uint32_t partLength = 0;
};

/// Nothing if the stream is whole, or if its headers cannot be followed.
std::optional<CodeStreamGap> FindGap(const metadata::ByteSource& source, const metadata::FileRange& codeStream);

/// A file with the gap mended. Does not own the source.
class MendedSource final : public metadata::ByteSource {
 public:
  MendedSource(const metadata::ByteSource& source, const CodeStreamGap& gap) : source_(source), gap_(gap) {}
  std::uint64_t Size() const override { return gap_.zerosEnd + 2; }
  std::size_t ReadSome(std::uint64_t offset, std::span<std::byte> out) const override;

 private:
  const metadata::ByteSource& source_;
  CodeStreamGap gap_;
};

}  // namespace ml::imaging
