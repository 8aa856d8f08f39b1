#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

#include "imaging/writers/write_image.h"
#include "metadata/exif_reader.h"

#include "fuzz_source.h"

namespace {

using Bytes = std::span<const std::byte>;

/// As many bytes off the front as the next two of `lengths` say.
std::vector<std::byte> Take(Bytes& rest, Bytes& lengths) {
  if (lengths.size() < 2) return {};
  const auto wanted = std::to_integer<std::size_t>(lengths[0]) << 8 | std::to_integer<std::size_t>(lengths[1]);
  const auto part = rest.first(std::min(rest.size(), wanted));
  rest = rest.subspan(part.size());
  lengths = lengths.subspan(2);
  return {part.begin(), part.end()};
}

ml::imaging::MetadataBlocks BlocksOf(Bytes input) {
  using namespace ml::metadata;
  constexpr std::size_t kHead = 12;
  auto lengths = input.first(std::min(input.size(), kHead));
  auto rest = input.subspan(lengths.size());
  ml::imaging::MetadataBlocks blocks;
  blocks.exif = Take(rest, lengths);
  blocks.iptc = ParseIptcBlock(ByteView(Take(rest, lengths), ByteOrder::Big), IptcCarrier::Resource);
  blocks.icc = Take(rest, lengths);
  blocks.makerNote.bytes = Take(rest, lengths);
  blocks.furtherApp1.push_back(Take(rest, lengths));
  if (lengths.size() == 2) blocks.makerNote.offset = std::to_integer<std::uint32_t>(lengths[0]);
  if (lengths.size() == 2 && lengths[1] != std::byte{0}) blocks.makerNote.order = ByteOrder::Big;
  blocks.summary.assign(reinterpret_cast<const char*>(rest.data()), rest.size());
  blocks.shooting.emplace();
  try {
    ReadExifBlock(*blocks.shooting, blocks.exif);
  } catch (ExifException) {
    return blocks;  // what was read stays
  }
  return blocks;
}

}  // namespace

/// What came from a hostile file, in each of the formats.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using ml::imaging::WrittenFormat;
  const auto blocks = BlocksOf(std::as_bytes(std::span(data, size)));
  const auto pixels = ml::imaging::MakePixelBuffer(3, 2);
  static const auto path =
      (std::filesystem::temp_directory_path() / ("ml-written-" + std::to_string(::getpid()))).string();
  for (const auto format : {WrittenFormat::Jpeg, WrittenFormat::Jpeg2000, WrittenFormat::Png, WrittenFormat::Tiff}) {
    Refusable([&] { WriteImage(format, pixels, blocks, path, {.resolution = 300}); });
  }
  std::filesystem::remove(path);
  return 0;
}
