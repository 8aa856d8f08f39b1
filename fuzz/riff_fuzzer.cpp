#include "metadata/riff.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ml::metadata::ReadAviFile(FuzzSource(data, size));
  return 0;
}
