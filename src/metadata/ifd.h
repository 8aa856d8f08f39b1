#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "metadata/byte_source.h"
#include "metadata/byte_view.h"
#include "metadata/file_range.h"

/// The structure that all TIFF-like data share: a header and chains of directories of 12-byte entries.
namespace ml::metadata {

enum class IfdType : std::uint16_t {
  Byte = 1,
  Ascii = 2,
  Short = 3,
  Long = 4,
  Rational = 5,
  Undefined = 7,
  SignedRational = 10
};

struct IfdEntry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;  ///< an IfdType, or whatever the file says
  std::uint32_t count = 0;
  std::uint32_t rawValue = 0;  ///< the four bytes of the value field
  std::uint32_t value = 0;     ///< the same, but a single short reduced to its 16 bits
  std::uint64_t position = 0;  ///< of the entry in the source; set by a walk
  bool Is(IfdType wanted) const { return type == static_cast<std::uint16_t>(wanted); }
};

constexpr std::size_t kIfdEntrySize = 12;
/// Kept: of a file whose first directory has more entries no shooting data are read.
constexpr std::uint32_t kMaxFirstEntries = 70;

/// Bytes of one value of a type; 0 if there is no such type.
constexpr std::uint32_t TypeSize(std::uint16_t type) {
  constexpr std::array<std::uint8_t, 14> kSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
  return type < kSizes.size() ? kSizes[type] : 0;
}

/// The entry at `index` of a view that begins with the first entry.
IfdEntry ReadIfdEntry(ByteView directory, std::size_t index);

/// Where the value of an entry stands whose `position` is known: in the entry itself if it has at most four bytes. Not
/// looked whether the source is that long. Types that nobody defined count as bytes.
FileRange IfdValueRange(const IfdEntry& entry, std::uint64_t base);
/// The value in `place` as numbers, shorts or else longs: at most `most`, and no more than the source holds.
std::vector<std::uint32_t> ReadIfdNumbers(const ByteSource& source, ByteOrder order, const IfdEntry& entry,
                                          FileRange place, std::uint32_t most);

struct TiffHeader {
  ByteOrder order = ByteOrder::Little;
  std::uint16_t magic = 0;
  std::uint32_t firstDirectory = 0;  ///< from the header on
  bool IsTiff() const { return magic == 42; }
};
/// The header at `base`; nothing if it is cut short or shows no byte order.
std::optional<TiffHeader> ReadTiffHeader(const ByteSource& source, std::uint64_t base);

/// The link behind the last entry of a directory; 0 where the source ends before it, as some writers leave it out
/// behind the last directory of a file.
std::uint32_t ReadIfdLink(const ByteSource& source, ByteOrder order, std::uint64_t position);
/// What the directory at `offset` is chained to; 0 at the end of the chain and where there is no directory.
std::uint32_t NextDirectory(const ByteSource& source, ByteOrder order, std::uint64_t base, std::uint32_t offset);

struct IfdPolicy {
  std::uint64_t base = 0;             ///< where the TIFF header stands; directory offsets count from there
  std::uint32_t maxEntries = 0xffff;  ///< a directory with more entries ends the walk with LimitExceeded
  bool followNext = true;             ///< go on with the next directory of the chain
  bool visitCutDirectory = true;      ///< entries before the end of the data are visited, then OutOfBounds
};

enum class Visit { Continue, Stop };
using IfdVisitor = std::function<Visit(const IfdEntry&)>;

/// Walks directories and remembers where it was, so that no cycle keeps it: a visitor may walk sub-directories
/// with the same walker. At most kMaxDirectories are read by one walker.
class IfdWalker {
 public:
  static constexpr std::size_t kMaxDirectories = 32;

  /// Does not own the source.
  IfdWalker(const ByteSource& source, ByteOrder order, const IfdPolicy& policy = {})
      : source_(source), order_(order), policy_(policy) {}

  ByteOrder Order() const { return order_; }
  /// Visits every entry of the directory at `offset` and, if the policy says so, of those chained to it; an
  /// offset of 0, one that was walked before and the limit end the chain. Throws ExifException.
  Visit Walk(std::uint32_t offset, const IfdVisitor& visitor);
  /// The same under other rules, for a sub-directory.
  Visit Walk(std::uint32_t offset, const IfdPolicy& policy, const IfdVisitor& visitor);

 private:
  Visit WalkOne(std::uint64_t position, const IfdPolicy& policy, const IfdVisitor& visitor, std::uint32_t& next);

  const ByteSource& source_;
  ByteOrder order_;
  IfdPolicy policy_;
  std::set<std::uint64_t> visited_;
};

}  // namespace ml::metadata
