#include "rawconvert/nef/nef_curve.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "metadata/ifd.h"
#include "rawconvert/nef/nef_error.h"

namespace ml::rawconvert {
namespace {

using metadata::ByteOrder;
using metadata::ByteSource;
using metadata::ByteView;
using metadata::IfdEntry;
using metadata::Visit;

constexpr std::uint16_t kMakerNote = 0x927C, kContrastCurve = 0x8C, kLinearisation = 0x96;
constexpr std::uint64_t kFixedPlaceD100 = 0x1756, kFixedPlace = 0xDA0;
/// The block of the first kind is found behind a table of another purpose.
constexpr std::uint64_t kOldBlockHead = 2110;
constexpr std::uint64_t kSplitPlace = 562;  ///< from the version on
constexpr std::size_t kValues = 4096;       ///< of a 12-bit sample
constexpr std::size_t kMaxEntries = 0x4001;

/// Where the block stands that ends in the curve.
struct Place {
  std::uint64_t position = 0;
  ByteOrder order = ByteOrder::Big;
  bool versioned = false;  ///< two bytes of version come first
};

struct Note {
  std::uint64_t base = 0;  ///< offsets count from here
  std::uint32_t directory = 0;
  ByteOrder order = ByteOrder::Big;
};

/// A note begins with its maker's name and a TIFF header or a bare directory, or with the directory at once.
Note OpenNote(const ByteSource& source, std::uint32_t position, ByteOrder order) {
  constexpr std::uint32_t kHead = 10, kShortHead = 8;
  const auto head = source.ReadUpTo(position, kHead);
  if (!ByteView(head, order).StartsWith(std::string_view("Nikon\0", 6))) return {0, position, order};
  const std::uint64_t base = std::uint64_t{position} + kHead;
  if (const auto header = metadata::ReadTiffHeader(source, base); header && header->IsTiff()) {
    return {base, header->firstDirectory, header->order};
  }
  return {0, position + kShortHead, order};
}

std::optional<std::uint32_t> FindNote(const ByteSource& source, const NefLayout& layout) {
  if (layout.exif == 0) return std::nullopt;
  std::optional<std::uint32_t> position;
  metadata::IfdWalker walker(source, layout.order, {.followNext = false});
  walker.Walk(layout.exif, [&](const IfdEntry& entry) {
    if (entry.tag == kMakerNote) position = entry.value;
    return Visit::Continue;
  });
  return position;
}

std::optional<Place> PlaceInNote(const ByteSource& source, const NefLayout& layout) {
  const auto position = FindNote(source, layout);
  if (!position) return std::nullopt;
  const auto note = OpenNote(source, *position, layout.order);
  std::optional<Place> place;
  metadata::IfdWalker walker(source, note.order, {.base = note.base, .followNext = false});
  walker.Walk(note.directory, [&](const IfdEntry& entry) {
    if (entry.tag == kContrastCurve || entry.tag == kLinearisation) {
      place = Place{note.base + entry.value, note.order, true};
    }
    return Visit::Continue;
  });
  return place;
}

Place FindPlace(const ByteSource& source, const NefLayout& layout) {
  try {
    if (const auto place = PlaceInNote(source, layout)) return *place;
  } catch (metadata::ExifException) {
    // A note that breaks off tells nothing of the curve.
  }
  return {layout.camera->index == kNefD100 ? kFixedPlaceD100 : kFixedPlace, layout.order, false};
}

/// Points at even distances over all values, and straight lines between them.
std::vector<std::uint16_t> Interpolated(const std::vector<std::uint16_t>& points) {
  const std::size_t step = kValues / (points.size() - 1);
  std::vector<std::uint16_t> values(kValues);
  for (std::size_t i = 0; i < kValues; ++i) {
    const std::size_t point = std::min(i / step, points.size() - 2), part = i - point * step;
    const std::size_t rest = step - std::min(part, step);
    values[i] = static_cast<std::uint16_t>((points[point] * rest + points[point + 1] * (step - rest)) / step);
  }
  return values;
}

std::vector<std::uint16_t> ReadShorts(const ByteSource& source, std::uint64_t position, std::size_t count,
                                      ByteOrder order) {
  const auto bytes = source.Read(position, count * 2);
  const ByteView view(bytes, order);
  std::vector<std::uint16_t> shorts(count);
  for (std::size_t i = 0; i < count; ++i) shorts[i] = view.readShort(i * 2);
  return shorts;
}

}  // namespace

NefCurve ReadNefCurve(const ByteSource& source, const NefLayout& layout) {
  constexpr std::uint8_t kLossy = 0x44, kSplit = 0x20, kLossless = 0x46, kOld = 0x49, kOldMinor = 0x58;
  const auto place = FindPlace(source, layout);
  std::uint64_t at = place.position;
  std::uint8_t major = kLossy, minor = 0;
  if (place.versioned) {
    major = static_cast<std::uint8_t>(source.ReadNumber(at, 1, place.order));
    minor = static_cast<std::uint8_t>(source.ReadNumber(at + 1, 1, place.order));
    at += 2;
    if (major == kOld || minor == kOldMinor) at += kOldBlockHead;
  }
  NefCurve curve;
  const auto head = ReadShorts(source, at, 5, place.order);
  for (std::size_t i = 0; i < 4; ++i) curve.predictors[i / 2][i % 2] = head[i];
  const std::size_t count = head[4];
  if (major == kLossless) {
    curve.code = NefCode::Lossless;
    curve.values.resize(kValues);
    std::iota(curve.values.begin(), curve.values.end(), std::uint16_t{0});
    return curve;
  }
  if (count < 2 || count > kMaxEntries) throw NefError::Damaged;
  curve.values = ReadShorts(source, at + 10, count, place.order);
  if (major == kLossy && minor == kSplit && count <= kValues) {
    curve.values = Interpolated(curve.values);
    curve.splitRow = static_cast<int>(source.ReadNumber(place.position + kSplitPlace, 2, place.order));
  }
  return curve;
}

}  // namespace ml::rawconvert
