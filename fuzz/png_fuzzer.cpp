#include "metadata/png_chunks.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = FuzzSource(data, size);
  ml::metadata::ReadPngInfo(source);
  ml::metadata::ReadPngIccProfile(source);
  return 0;
}
