#include "imaging/jp2/jp2_decoder.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return EndsCleanly([&] { ml::imaging::DecodeJp2(FuzzSource(data, size), {}); });
}
