#include "metadata/edit/exif_layout.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "metadata/byte_source.h"
#include "metadata/edit/maker_note_reach.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

using namespace tiff_tag;

constexpr std::array<std::uint16_t, 3> kSubDirectories = {kExif, kGps, kInteroperability};
constexpr std::uint32_t kValueInEntry = 8, kInlineSize = 4;
constexpr std::uint32_t kSmallestComment = 9;  ///< an encoding and one character
constexpr std::uint64_t kHeaderSize = 8;
constexpr std::size_t kMaxChain = 32;

FileRange PlaceOf(const IfdEntry& entry) {
  const auto size = std::uint64_t{entry.count} * TypeSize(entry.type);
  return {size <= kInlineSize ? entry.position + kValueInEntry : entry.value, size};
}

class LayoutFinder {
 public:
  explicit LayoutFinder(ByteView tiff)
      : tiff_(tiff), source_(tiff.Bytes()), walker_(source_, tiff.Order(), IfdPolicy{.followNext = false}) {}

  ExifLayout Find() {
    layout_.used.push_back({0, kHeaderSize});
    try {
      FollowChain(tiff_.readLong(4));
    } catch (ExifException) {
      layout_.broken = true;
    }
    DropShared();
    return std::move(layout_);
  }

 private:
  enum class Directory { First, Chained, Sub };

  bool Inside(FileRange range) const { return range.End() <= tiff_.Size(); }

  /// Gives the position of the link behind its entries.
  std::uint64_t WalkDirectory(std::uint32_t offset, Directory kind) {
    const std::uint64_t link = std::uint64_t{offset} + 2 + std::uint64_t{tiff_.readShort(offset)} * kIfdEntrySize;
    layout_.used.push_back({offset, link + 4 - offset});
    std::optional<IfdEntry> place, length;
    walker_.Walk(offset, [&](const IfdEntry& entry) {
      Take(entry, kind);
      if (entry.tag == kJpegOffset) place = entry;
      if (entry.tag == kJpegLength) length = entry;
      return Visit::Continue;
    });
    if (kind != Directory::Sub && place && length && !layout_.thumbnail) TakeThumbnail(*place, *length);
    return link;
  }

  void Take(const IfdEntry& entry, Directory kind) {
    const auto range = PlaceOf(entry);
    if (range.size > kInlineSize) layout_.used.push_back(range);
    const bool isSubDirectory = std::ranges::find(kSubDirectories, entry.tag) != kSubDirectories.end();
    if (isSubDirectory && entry.value != 0 && seen_.insert(entry.value).second) EnterSubDirectory(entry);
    if (entry.tag == kMakerNote && inExif_) TakeMakerNote(range);
    const bool isText = entry.Is(IfdType::Ascii) && range.size > 0 && Inside(range);
    if (entry.tag == kDescription && kind == Directory::First && isText && !layout_.imageDescription) {
      layout_.imageDescription = range;
    }
    const bool isComment = (isText || entry.Is(IfdType::Undefined)) && range.size >= kSmallestComment && Inside(range);
    if (entry.tag == kUserComment && inExif_ && isComment && !layout_.userComment) layout_.userComment = range;
  }

  /// A text that stands where something else does, too, must not be overwritten. The description is no way out: what
  /// stands there is not shown where there is a comment.
  void DropShared() {
    const auto isShared = [&](const std::optional<FileRange>& text) { return text && layout_.CountUses(*text) > 1; };
    const bool comment = isShared(layout_.userComment);
    if (comment) layout_.userComment.reset();
    if (comment || isShared(layout_.imageDescription)) layout_.imageDescription.reset();
  }

  /// A damaged one does not cost what the chain leads to.
  void EnterSubDirectory(const IfdEntry& entry) {
    const bool outer = std::exchange(inExif_, entry.tag == kExif);
    try {
      WalkDirectory(entry.value, Directory::Sub);
    } catch (ExifException) {
      layout_.broken = true;
    }
    inExif_ = outer;
  }

  void TakeMakerNote(FileRange note) {
    if (!Inside(note)) return;
    const auto reach = FindMakerNoteReach(tiff_, note);
    layout_.used.insert(layout_.used.end(), reach.begin(), reach.end());
  }

  void TakeThumbnail(const IfdEntry& place, const IfdEntry& length) {
    if (place.value > tiff_.Size()) return;
    const auto size = std::min<std::uint64_t>(length.value, tiff_.Size() - place.value);
    layout_.thumbnail = ExifLayout::Thumbnail{{place.value, size}, place, length};
  }

  void FollowChain(std::uint32_t offset) {
    for (auto kind = Directory::First; offset != 0; kind = Directory::Chained) {
      if (seen_.size() >= kMaxChain || !seen_.insert(offset).second) throw ExifException::LimitExceeded;
      const auto link = WalkDirectory(offset, kind);
      offset = tiff_.readLong(link);
      if (offset == 0) layout_.lastLink = link;
    }
  }

  ByteView tiff_;
  MemorySource source_;
  IfdWalker walker_;
  ExifLayout layout_;
  std::set<std::uint32_t> seen_;
  bool inExif_ = false;
};

}  // namespace

std::ptrdiff_t ExifLayout::CountUses(FileRange range) const {
  return std::ranges::count_if(
      used, [&](const FileRange& one) { return one.position < range.End() && range.position < one.End(); });
}

ExifLayout FindExifLayout(ByteView tiff) { return LayoutFinder(tiff).Find(); }

}  // namespace ml::metadata
