#include "imaging/psd/psd_decoder.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return EndsCleanly([&] { ml::imaging::DecodePsd(FuzzSource(data, size)); });
}
