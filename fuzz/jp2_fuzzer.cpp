#include "metadata/icc_carriers.h"
#include "metadata/jp2_boxes.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  if (const auto file = ReadJp2File(source)) file->FindUuid(source, kIptcUuid);
  ReadJp2IccProfile(source);
  return 0;
}
