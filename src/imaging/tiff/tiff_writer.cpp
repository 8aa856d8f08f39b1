#include "imaging/tiff/tiff_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <limits>
#include <span>
#include <string>
#include <utility>

#include "imaging/tiff/shooting_tags.h"
#include "imaging/tiff/tiff_tags.h"
#include "imaging/writers/messages.h"
#include "imaging/writers/output_file.h"
#include "metadata/byte_source.h"
#include "metadata/edit/iptc_resource.h"
#include "metadata/iptc/iptc_dataset_codec.h"
#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_dates.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using metadata::ByteOrder;
using metadata::ByteWriter;
using metadata::IfdType;
using platform::UserError;

constexpr std::uint32_t kHeaderSize = 8;
constexpr int kMaxSide = 0xffff;  ///< sides are stored as shorts
constexpr int kMinorityRgb = 2, kGrey = 1;
/// Rows go out in pieces of about so many bytes.
constexpr std::size_t kPiece = std::size_t{1} << 20;

std::uint64_t StripSize(const PixelRows& pixels) {
  return std::uint64_t{pixels.RowBytes()} * static_cast<std::uint64_t>(pixels.height);
}

/// "20030809", of the recorded date or of the file's time.
std::string BlockDate(const metadata::ExifData& shooting) {
  constexpr std::size_t kDateSize = 10, kDigits = 8;
  std::string digits;
  for (const char c : TagDate(shooting).substr(0, kDateSize)) {
    if (c >= '0' && c <= '9') digits += c;
  }
  return digits.size() == kDigits ? digits : metadata::IptcDate(static_cast<std::time_t>(shooting.shootingTime));
}

/// The source's, else one that says no more than the day.
std::vector<std::byte> IptcBytes(const MetadataBlocks& blocks) {
  auto block = BuildIptcBlock(blocks.iptc, metadata::IptcCarrier::Bare);
  if (!block.empty()) return block;
  std::string text;
  metadata::AppendIptcVersion(text);
  if (blocks.shooting) {
    metadata::AppendIptcDataset(text, metadata::kApplicationRecord, metadata::iptc_dataset::kDateCreated,
                                BlockDate(*blocks.shooting));
  }
  text.append((4 - text.size() % 4) % 4, '\0');
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

std::vector<std::byte> ImageResource(const MetadataBlocks& blocks) {
  if (blocks.iptc.items.empty()) return {};
  auto resource = metadata::BuildIptcResource(blocks.iptc, metadata::MemorySource(std::span<const std::byte>()), {});
  if (resource.size() % 2 != 0) resource.push_back({});
  return resource;
}

void AddPicture(TiffTags& tags, const PixelRows& pixels, int resolution, const metadata::ExifData* shooting) {
  const bool colours = pixels.channels == 3;
  const auto bits = static_cast<std::uint16_t>(pixels.bytesPerSample * 8);
  const std::array<std::uint16_t, 3> depths{bits, bits, bits};
  tags.Long(0xfe, 0);
  tags.Short(0x100, pixels.width);
  tags.Short(0x101, pixels.height);
  tags.Shorts(0x102, std::span(depths).first(static_cast<std::size_t>(pixels.channels)));
  tags.Short(0x103, 1);
  tags.Short(0x106, colours ? kMinorityRgb : kGrey);
  if (shooting != nullptr && !shooting->make.empty()) tags.Ascii(0x10f, shooting->make);
  if (shooting != nullptr && !shooting->model.empty()) tags.Ascii(0x110, shooting->model);
  tags.Short(0x111, kHeaderSize);
  tags.Short(0x115, pixels.channels);
  tags.Short(0x116, pixels.height);
  tags.Long(0x117, static_cast<std::uint32_t>(StripSize(pixels)));
  const auto dots = static_cast<std::uint32_t>(std::max(resolution, 0));
  tags.Rational(0x11a, dots, 1);
  tags.Rational(0x11b, dots, 1);
  tags.Short(0x11c, 1);
  tags.Short(0x128, 2);
}

void AddTexts(TiffTags& tags, const metadata::ExifData& shooting) {
  const std::pair<std::uint16_t, std::string> texts[] = {
      {0x132, TagDate(shooting)}, {0x13b, shooting.owner}, {0x8298, shooting.copyright}};
  for (const auto& [tag, text] : texts) {
    if (!text.empty()) tags.Ascii(tag, text);
  }
}

TiffTags PictureTags(const PixelRows& pixels, const MetadataBlocks& blocks, int resolution) {
  const auto* shooting = blocks.shooting ? &*blocks.shooting : nullptr;
  TiffTags tags;
  AddPicture(tags, pixels, resolution, shooting);
  if (shooting != nullptr) AddTexts(tags, *shooting);
  tags.Raw(0x83bb, IfdType::Long, IptcBytes(blocks));
  auto resource = ImageResource(blocks);
  if (!resource.empty()) tags.Raw(0x8649, IfdType::Byte, std::move(resource));
  if (!blocks.icc.empty()) tags.Raw(0x8773, IfdType::Undefined, blocks.icc);
  if (shooting != nullptr) tags.NextDirectory(0x8769);
  return tags;
}

/// All that stands behind the pixels. Throws if the file would be too long.
std::vector<std::byte> Tail(const PixelRows& pixels, const MetadataBlocks& blocks, int resolution,
                            const std::string& path) {
  const auto picture = PictureTags(pixels, blocks, resolution);
  const auto shooting = blocks.shooting ? ShootingTags(*blocks.shooting, blocks.makerNote) : TiffTags();
  const auto first = StripSize(pixels) + kHeaderSize;
  const auto second = first + picture.DirectorySize();
  const auto values = blocks.shooting ? second + shooting.DirectorySize() : second;
  const auto end = values + picture.ValuesSize(values);
  if (end + shooting.ValuesSize(end) > std::numeric_limits<std::uint32_t>::max()) {
    throw UserError(RefusalOf(messages::kWriteTiff, path, messages::kTooLong));
  }
  ByteWriter directories(ByteOrder::Little), data(ByteOrder::Little);
  picture.Write(first, values, directories, data);
  if (blocks.shooting) shooting.Write(second, values, directories, data);
  directories.Bytes(data.View());
  return directories.Take();
}

void CheckPixels(const PixelRows& pixels, const std::string& path) {
  if (pixels.bytesPerSample != 1 && pixels.bytesPerSample != 2) throw UserError(messages::kTiffDepth);
  if (pixels.channels != 1 && pixels.channels != 3) throw UserError(messages::kTiffChannels);
  if (pixels.width > kMaxSide || pixels.height > kMaxSide) {
    throw UserError(RefusalOf(messages::kWriteTiff, path, messages::kTooLong));
  }
}

/// Shows where the file broke off.
void ShowRow(const PixelRows& pixels, int row, const std::string& text, platform::Interaction& ask) {
  std::array<char, 160> line{};
  std::snprintf(line.data(), line.size(), messages::kTiffRow, row, pixels.height, pixels.width,
                static_cast<int>(pixels.PixelBytes()), 0);
  ask.message({.text = text + line.data(), .caption = messages::kTiffRowCaption});
}

/// Whether the rows stand in memory as they do in the file.
bool IsContiguous(const PixelRows& pixels) {
  return std::endian::native == std::endian::little && pixels.stride == pixels.RowBytes() &&
         (pixels.order == PixelOrder::Rgb || pixels.channels == 1);
}

const std::byte* FileRow(const PixelRows& pixels, int y, std::vector<std::byte>& scratch) {
  const auto* row = RgbRow(pixels, y, scratch);
  if (std::endian::native == std::endian::little || pixels.bytesPerSample == 1) return row;
  scratch.assign(row, row + pixels.RowBytes());
  for (std::size_t i = 0; i + 1 < scratch.size(); i += 2) std::swap(scratch[i], scratch[i + 1]);
  return scratch.data();
}

void WriteRows(OutputFile& out, const PixelRows& pixels, platform::Interaction* ask) {
  const int together = IsContiguous(pixels) ? static_cast<int>(kPiece / pixels.RowBytes()) + 1 : 1;
  std::vector<std::byte> scratch;
  for (int y = 0; y < pixels.height; y += together) {
    const int count = std::min(together, pixels.height - y);
    try {
      out.Write({FileRow(pixels, y, scratch), static_cast<std::size_t>(count) * pixels.RowBytes()});
    } catch (const UserError& error) {
      if (ask != nullptr) ShowRow(pixels, y, error.what(), *ask);
      throw;
    }
    out.Done(y + count, pixels.height);
  }
}

}  // namespace

void WriteTIFF(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
               const WriteOptions& options) {
  CheckPixels(pixels, path);
  const auto tail = Tail(pixels, blocks, options.resolution, path);
  ByteWriter header(ByteOrder::Little);
  header.Text("II");
  header.Short(42);
  header.Long(static_cast<std::uint32_t>(StripSize(pixels) + kHeaderSize));
  OutputFile out(path, {messages::kWriteTiff, messages::kDiskFull}, options);
  out.Write(header.View());
  WriteRows(out, pixels, options.ask);
  out.Write(tail);
  out.Commit();
}

}  // namespace ml::imaging
