#include "rawconvert/nef/nef_directory.h"

#include <algorithm>
#include <string>
#include <vector>

#include "metadata/ifd.h"

namespace ml::rawconvert {
namespace {

using metadata::ByteOrder;
using metadata::ByteSource;
using metadata::IfdEntry;
using metadata::IfdType;
using metadata::Visit;

namespace tag {
constexpr std::uint16_t kWidth = 0x100, kHeight = 0x101, kBitsPerSample = 0x102, kCompression = 0x103, kModel = 0x110,
                        kStripOffsets = 0x111, kSamplesPerPixel = 0x115, kStripByteCounts = 0x117,
                        kSubDirectories = 0x14A, kExif = 0x8769;
}
constexpr std::uint32_t kMaxModel = 64;
constexpr std::uint32_t kMaxSubDirectories = 8;
constexpr std::uint32_t kMaxStrips = 65536;

/// A directory on the way.
struct Found {
  NefDirectory directory;
  std::optional<IfdEntry> model, subDirectories, stripOffsets, stripByteCounts;
  std::uint32_t exif = 0;
};

void Take(const IfdEntry& entry, Found& found) {
  switch (entry.tag) {
    case tag::kWidth:
      found.directory.width = entry.value;
      return;
    case tag::kHeight:
      found.directory.height = entry.value;
      return;
    case tag::kBitsPerSample:
      found.directory.bitsPerSample = entry.value;
      return;
    case tag::kCompression:
      found.directory.compression = entry.value;
      return;
    case tag::kSamplesPerPixel:
      found.directory.samplesPerPixel = entry.value;
      return;
    case tag::kModel:
      found.model = entry;
      return;
    case tag::kStripOffsets:
      found.stripOffsets = entry;
      return;
    case tag::kStripByteCounts:
      found.stripByteCounts = entry;
      return;
    case tag::kSubDirectories:
      found.subDirectories = entry;
      return;
    case tag::kExif:
      found.exif = entry.value;
      return;
    default:
      return;
  }
}

/// At most `most`. Throws OutOfBounds if the file ends before the last of them: without it nobody knows the picture.
std::vector<std::uint32_t> Numbers(const ByteSource& source, ByteOrder order, const IfdEntry& entry,
                                   std::uint32_t most) {
  const auto place = metadata::IfdValueRange(entry, 0);
  auto numbers = metadata::ReadIfdNumbers(source, order, entry, place, most);
  if (numbers.size() < most && place.End() > source.Size()) throw metadata::ExifException::OutOfBounds;
  return numbers;
}

void TakeStrips(const ByteSource& source, ByteOrder order, Found& found) {
  if (!found.stripOffsets || !found.stripByteCounts || found.stripOffsets->count != found.stripByteCounts->count)
    return;
  const auto offsets = Numbers(source, order, *found.stripOffsets, kMaxStrips);
  const auto counts = Numbers(source, order, *found.stripByteCounts, kMaxStrips);
  if (offsets.empty() || counts.size() != offsets.size()) return;
  auto& strip = found.directory.strip;
  strip = {offsets.front(), 0};
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    if (strip.End() != offsets[i]) return;
    strip.size += counts[i];
  }
  found.directory.contiguous = true;
}

class Reader {
 public:
  Reader(const ByteSource& source, const metadata::TiffHeader& header)
      : source_(source), header_(header), walker_(source, header.order, {.followNext = false}) {}

  NefLayout Read() {
    NefLayout layout{.order = header_.order, .camera = nullptr, .raw = {}};
    const auto first = Directory(header_.firstDirectory);
    layout.exif = first.exif;
    if (first.model) layout.camera = FindNefCamera(Text(*first.model));
    if (!layout.camera) return layout;
    Offer(first, layout);
    if (first.subDirectories) {
      for (const auto offset : Numbers(source_, header_.order, *first.subDirectories, kMaxSubDirectories)) {
        Offer(Directory(offset), layout);
      }
    }
    if (layout.camera->index == kNefE5700) OfferChain(layout);
    return layout;
  }

 private:
  Found Directory(std::uint32_t offset) {
    Found found;
    walker_.Walk(offset, [&](const IfdEntry& entry) {
      Take(entry, found);
      return Visit::Continue;
    });
    TakeStrips(source_, header_.order, found);
    return found;
  }

  void OfferChain(NefLayout& layout) {
    auto offset = header_.firstDirectory;
    for (std::size_t i = 1; i < metadata::IfdWalker::kMaxDirectories; ++i) {
      offset = metadata::NextDirectory(source_, header_.order, 0, offset);
      if (offset == 0) return;
      Offer(Directory(offset), layout);
    }
  }

  /// The largest picture with one sample a site, which no preview or thumbnail is.
  static void Offer(const Found& found, NefLayout& layout) {
    const auto& directory = found.directory;
    const auto sites = [](const NefDirectory& d) { return std::uint64_t{d.width} * d.height; };
    if (directory.samplesPerPixel != 1 || !directory.contiguous || directory.bitsPerSample <= 8) return;
    if (!layout.raw.contiguous || sites(directory) > sites(layout.raw)) layout.raw = directory;
  }

  std::string Text(const IfdEntry& entry) const {
    constexpr std::uint32_t kInEntry = 4;  // no camera has so short a name
    if (entry.count <= kInEntry) return {};
    const auto bytes = source_.Read(entry.value, std::min(entry.count, kMaxModel));
    const std::string text(metadata::ByteView(bytes, header_.order).Text(0, bytes.size()));
    return text.substr(0, text.find('\0'));
  }

  const ByteSource& source_;
  const metadata::TiffHeader header_;
  metadata::IfdWalker walker_;
};

}  // namespace

NefLayout ReadNefLayout(const ByteSource& source) {
  const auto header = metadata::ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) throw metadata::ExifException::BadHeader;
  return Reader(source, *header).Read();
}

}  // namespace ml::rawconvert
