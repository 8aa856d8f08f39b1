#include "metadata/tiff_facts.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = FuzzSource(data, size);
  ml::metadata::ReadTiffFacts(source);
  ml::metadata::ReadTiffIccProfile(source);
  return 0;
}
