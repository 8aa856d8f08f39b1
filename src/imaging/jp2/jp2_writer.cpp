#include "imaging/jp2/jp2_writer.h"

#include <limits>
#include <string_view>

#include "imaging/jp2/jp2_encoder.h"
#include "imaging/writers/messages.h"
#include "imaging/writers/metadata_segments.h"
#include "imaging/writers/output_file.h"
#include "metadata/byte_writer.h"
#include "metadata/iptc/iptc_block.h"
#include "metadata/jp2_boxes.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using metadata::ByteOrder;
using metadata::ByteWriter;
using platform::UserError;

constexpr std::size_t kBoxHeader = 8;

void AppendHead(ByteWriter& out, std::string_view type, std::size_t size) {
  out.Long(static_cast<std::uint32_t>(size + kBoxHeader));
  out.Text(type);
}

void AppendBox(ByteWriter& out, std::string_view type, const ByteWriter& data) {
  AppendHead(out, type, data.Size());
  out.Bytes(data.View());
}

ByteWriter ImageHeader(const PixelRows& pixels) {
  constexpr std::uint8_t kWavelets = 7;
  ByteWriter data(ByteOrder::Big);
  data.Long(static_cast<std::uint32_t>(pixels.height));
  data.Long(static_cast<std::uint32_t>(pixels.width));
  data.Short(static_cast<std::uint16_t>(pixels.channels));
  data.Byte(static_cast<std::uint8_t>(pixels.bytesPerSample * 8 - 1));
  data.Byte(kWavelets);
  data.Short(0);  // the colours are known, and nobody owns the picture
  return data;
}

ByteWriter Colours(const PixelRows& pixels, const std::vector<std::byte>& profile) {
  constexpr std::uint8_t kByNumber = 1, kByProfile = 2;
  constexpr std::uint32_t kSrgb = 16, kGrey = 17;
  ByteWriter data(ByteOrder::Big);
  data.Byte(profile.empty() ? kByNumber : kByProfile);
  data.Short(0);
  if (profile.empty()) {
    data.Long(pixels.channels == 3 ? kSrgb : kGrey);
  } else {
    data.Bytes(profile);
  }
  return data;
}

void AppendUuid(ByteWriter& out, const metadata::Jp2Uuid& uuid, const std::vector<std::byte>& bytes) {
  if (bytes.empty()) return;
  AppendHead(out, "uuid", uuid.size() + bytes.size());
  for (const auto byte : uuid) out.Byte(byte);
  out.Bytes(bytes);
}

/// All boxes in front of the code stream's.
std::vector<std::byte> Boxes(const PixelRows& pixels, const MetadataBlocks& blocks) {
  ByteWriter header(ByteOrder::Big), out(ByteOrder::Big);
  AppendBox(header, "ihdr", ImageHeader(pixels));
  AppendBox(header, "colr", Colours(pixels, blocks.icc));
  AppendHead(out, "jP  ", 4);
  out.Long(0x0d0a870a);
  AppendHead(out, "ftyp", 12);
  out.Text("jp2 ");
  out.Long(0);
  out.Text("jp2 ");
  AppendBox(out, "jp2h", header);
  AppendUuid(out, metadata::kExifUuid, ExifForBox(pixels, blocks, 0).value_or(std::vector<std::byte>()));
  AppendUuid(out, metadata::kIptcUuid, BuildIptcBlock(blocks.iptc, metadata::IptcCarrier::Bare));
  return out.Take();
}

std::vector<std::byte> CodeStream(const PixelRows& pixels, OutputFile& out, const std::string& path,
                                  const WriteOptions& options) {
  try {
    auto bytes = EncodeJp2CodeStream(pixels, RateOf(options.quality), options.threads,
                                     [&](int done, int all) { out.Done(done, all); });
    if (bytes.size() <= std::numeric_limits<std::uint32_t>::max() - kBoxHeader) return bytes;
  } catch (const platform::LibraryError& error) {
    throw UserError(RefusalOf(error.Reason().c_str(), path, error.Description()));
  }
  throw UserError(RefusalOf(messages::kJp2Encode, path, messages::kTooLong));
}

}  // namespace

void WriteJPEG2000(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
                   const WriteOptions& options) {
  OutputFile out(path, {messages::kWriteJp2}, options);
  ByteWriter boxes(ByteOrder::Big);
  boxes.Bytes(Prepared(messages::kWriteJp2, path, [&] { return Boxes(pixels, blocks); }));
  const auto codeStream = CodeStream(pixels, out, path, options);
  AppendHead(boxes, "jp2c", codeStream.size());
  out.Write(boxes.View());
  out.Write(codeStream);
  out.Commit();
}

}  // namespace ml::imaging
