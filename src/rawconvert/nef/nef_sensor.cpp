#include "rawconvert/nef/nef_sensor.h"

#include <algorithm>
#include <optional>

#include "imaging/pixel_buffer.h"
#include "metadata/file_range.h"
#include "platform/errors.h"
#include "platform/readable_file.h"
#include "rawconvert/nef/nef_curve.h"
#include "rawconvert/nef/nef_directory.h"
#include "rawconvert/nef/nef_error.h"
#include "rawconvert/nef/nef_messages.h"
#include "rawconvert/nef/nef_samples.h"
#include "rawconvert/nef/row_progress.h"

namespace ml::rawconvert {
namespace {

using metadata::ByteSource;

constexpr std::uint32_t kBits = 12;
constexpr std::uint32_t kUncompressed = 1, kCompressed = 0x8799;
constexpr int kWideD100 = 3037;   ///< columns of D100 data without compression, behind which ..
constexpr int kSkippedD100 = 3;   ///< .. stand some more that show nothing
constexpr int kReadPercent = 20;  ///< of the whole development
/// A coded sample has two bits at least.
constexpr std::uint64_t kMaxSamplesPerByte = 4;

/// Data without compression put a byte of zero behind each ten samples; 16 of them show whether it is so.
bool HasZeroBytes(const ByteSource& source, const metadata::FileRange& strip) {
  constexpr std::size_t kLooked = 256, kStep = 16;
  const auto bytes = source.Read(strip.position, kLooked);
  for (std::size_t at = kStep - 1; at < kLooked; at += kStep) {
    if (bytes[at] != std::byte{0}) return false;
  }
  return true;
}

struct Storage {
  bool compressed = false;
  NefGrid grid;
  NefPacking packing{};
};

/// D100 data in the two ways in which they come without compression; nothing if it is none of them.
std::optional<Storage> WideD100(const ByteSource& source, const NefDirectory& raw) {
  const int height = static_cast<int>(raw.height);
  const NefGrid grid{kWideD100, height};
  const int rowWithSkipped = kWideD100 + kSkippedD100;
  if (raw.strip.size == std::uint64_t{raw.height} * kWideD100 * kBits / 8) {
    const NefPacking whole{.rowSamples = rowWithSkipped};
    const bool holdsSkipped = raw.strip.position + PackedNefSize(whole, height) <= source.Size();
    return Storage{false, grid, {.rowSamples = holdsSkipped ? rowWithSkipped : kWideD100}};
  }
  const NefPacking tens{.rowSamples = rowWithSkipped, .tensWithByte = true};
  if (raw.strip.size == PackedNefSize(tens, height) && HasZeroBytes(source, raw.strip))
    return Storage{false, grid, tens};
  return std::nullopt;
}

Storage FindStorage(const ByteSource& source, const NefLayout& layout) {
  const auto& raw = layout.raw;
  const NefGrid grid{static_cast<int>(raw.width), static_cast<int>(raw.height)};
  if (layout.camera->index == kNefD100) {
    if (const auto wide = WideD100(source, raw)) return *wide;
  }
  const NefPacking tight{.rowSamples = grid.width, .twoFields = layout.camera->index == kNefE5700};
  if (raw.strip.size >= PackedNefSize(tight, grid.height)) return {false, grid, tight};
  if (raw.compression == kCompressed) return {true, grid};
  throw raw.compression <= kUncompressed ? NefError::Cut : NefError::UnknownLayout;
}

/// The directory with what it leaves open filled in. Sizes may lie, so nothing is allocated that the file cannot fill.
NefDirectory Checked(const ByteSource& source, const NefLayout& layout) {
  auto raw = layout.raw;
  if (!raw.contiguous || raw.bitsPerSample != kBits) throw NefError::UnknownLayout;
  if (raw.width == 0) raw.width = static_cast<std::uint32_t>(layout.camera->width);
  if (raw.height == 0) raw.height = static_cast<std::uint32_t>(layout.camera->height);
  constexpr std::uint32_t kMinEdge = 6, kMaxEdge = 30000;
  const auto [low, high] = std::minmax(raw.width, raw.height);
  const auto sites = std::uint64_t{raw.width} * raw.height;
  if (low < kMinEdge || high > kMaxEdge || sites > imaging::kMaxPixelsWhole) throw NefError::TooLarge;
  if (metadata::CutToSource(raw.strip, source).size * kMaxSamplesPerByte < sites) throw NefError::Cut;
  return raw;
}

NefSensor Read(const ByteSource& source, const RowWatch& row) {
  auto layout = ReadNefLayout(source);
  if (!layout.camera) throw NefError::UnknownCamera;
  layout.raw = Checked(source, layout);
  const auto storage = FindStorage(source, layout);
  const auto wanted = storage.compressed ? layout.raw.strip.size : PackedNefSize(storage.packing, storage.grid.height);
  const auto range = metadata::CutToSource({layout.raw.strip.position, wanted}, source);
  const auto bytes = source.Read(range.position, static_cast<std::size_t>(range.size));
  const metadata::ByteView data(bytes, layout.order);
  NefSensor sensor{*layout.camera, storage.grid.width, storage.grid.height, {}};
  sensor.samples = storage.compressed ? DecodeCompressedNef(data, storage.grid, ReadNefCurve(source, layout), row)
                                      : DecodePackedNef(data, storage.grid, storage.packing, row);
  return sensor;
}

const char* SentenceOf(NefError error) {
  switch (error) {
    case NefError::UnknownCamera:
      return nef_messages::kUnknownCamera;
    case NefError::UnknownLayout:
      return nef_messages::kUnknownLayout;
    case NefError::TooLarge:
      return nef_messages::kTooLarge;
    case NefError::Cut:
      return nef_messages::kCut;
    default:
      return nef_messages::kDamaged;
  }
}

}  // namespace

NefSensor ReadNefSensor(const ByteSource& source, const std::string& path, const DevelopWatch& watch) {
  RowProgress progress(watch, 0, kReadPercent);
  try {
    return Read(source, [&](int row, int rows) { progress.Reach(row, rows); });
  } catch (NefError error) {
    throw platform::UserError(path + SentenceOf(error));
  } catch (metadata::ExifException error) {
    const bool cut = error == metadata::ExifException::OutOfBounds;
    throw platform::UserError(path + (cut ? nef_messages::kCut : nef_messages::kUnknownCamera));
  }
}

NefSensor ReadNefSensor(const std::string& path, const DevelopWatch& watch) {
  const platform::ReadableFile file(path);
  return ReadNefSensor(metadata::FileSource(file), path, watch);
}

}  // namespace ml::rawconvert
