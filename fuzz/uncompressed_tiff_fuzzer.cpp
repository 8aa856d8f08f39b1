#include "imaging/tiff/uncompressed_tiff.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Refusable([&] { ml::imaging::ReadUncompressedTiff(FuzzSource(data, size)); });
  return 0;
}
