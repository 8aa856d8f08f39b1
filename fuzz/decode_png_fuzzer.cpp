#include "imaging/png/png_decoder.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return EndsCleanly([&] { ml::imaging::DecodePng(FuzzSource(data, size)); });
}
