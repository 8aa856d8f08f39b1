#include "metadata/bmp_size.h"
#include "metadata/gif_size.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = FuzzSource(data, size);
  ml::metadata::ReadGifSize(source);
  ml::metadata::ReadBmpSize(source);
  return 0;
}
