#include "imaging/raw/raw_preview.h"

#include <libraw/libraw.h>

#include <memory>

#include "imaging/messages.h"
#include "imaging/openmp_bound.h"
#include "imaging/read_whole.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr unsigned kMaxRawMemoryMiB = 512;
/// The closest packing has more than a bit a pixel. A file far below was cut off, and decoding it gives noise.
constexpr long long kMaxPixelsPerByte = 32;

void Check(int code) {
  if (code != LIBRAW_SUCCESS) throw platform::LibraryError(LibRaw::strerror(code), "");
}

/// The object is too large for the stack.
std::unique_ptr<LibRaw> MakeDecoder() {
  auto decoder = std::make_unique<LibRaw>();
  decoder->set_dataerror_handler([](void*, const char*, auto) {}, nullptr);  // the usual one prints
  decoder->set_memerror_handler([](void*, const char*, const char*) {}, nullptr);
  auto& params = decoder->imgdata.params;
  params.half_size = 1;
  params.use_camera_wb = 1;
  params.no_auto_bright = 1;
  params.user_flip = 0;
  params.output_bps = 8;
  params.max_raw_memory_mb = kMaxRawMemoryMiB;
  return decoder;
}

PixelBuffer TakePixels(LibRaw& decoder) {
  int width = 0, height = 0, colours = 0, bits = 0;
  decoder.get_mem_image_format(&width, &height, &colours, &bits);
  CheckPixelCount(width, height, kMaxPixelsWhole);
  if (bits != 8 || (colours != 1 && colours != 3)) Refuse(messages::kUnknownLayout);
  auto pixels = MakePixelBuffer(width, height);
  if (colours == 3) {
    Check(decoder.copy_mem_image(pixels.data.data(), static_cast<int>(pixels.RowBytes()), 0));
    return pixels;
  }
  std::vector<std::byte> grey(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  Check(decoder.copy_mem_image(grey.data(), width, 0));
  for (std::size_t i = 0; i < pixels.data.size(); ++i) pixels.data[i] = grey[i / 3];
  return pixels;
}

}  // namespace

DecodedPicture DecodeRawPreview(const metadata::ByteSource& source) {
  auto file = ReadWhole(source);
  const OpenMpBound bound;
  const auto decoder = MakeDecoder();
  Check(decoder->open_buffer(file.data(), file.size()));
  const auto& sizes = decoder->imgdata.sizes;
  CheckPixelCount(sizes.raw_width, sizes.raw_height, kMaxPixelsWhole);
  if (static_cast<long long>(file.size()) * kMaxPixelsPerByte <
      static_cast<long long>(sizes.raw_width) * sizes.raw_height) {
    Refuse(messages::kFileEndsEarly);
  }
  Check(decoder->unpack());
  const bool damaged = decoder->error_count() > 0;
  const PictureSize full{sizes.width, sizes.height};
  Check(decoder->dcraw_process());
  return {TakePixels(*decoder), full.width, full.height, damaged};
}

}  // namespace ml::imaging
