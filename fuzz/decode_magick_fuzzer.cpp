#include "imaging/magick/magick_decoder.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using ml::imaging::MagickFormat;
  for (const auto format : {MagickFormat::Tiff, MagickFormat::Gif, MagickFormat::Bmp}) {
    EndsCleanly([&] { ml::imaging::DecodeMagick(FuzzSource(data, size), format); });
  }
  return 0;
}
