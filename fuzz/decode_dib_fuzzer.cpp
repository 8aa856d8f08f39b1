#include "imaging/dib/dib_decoder.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ml::metadata::ByteView input(std::as_bytes(std::span(data, size)), ml::metadata::ByteOrder::Little);
  return EndsCleanly([&] { ml::imaging::DecodeDib(input, input); });
}
