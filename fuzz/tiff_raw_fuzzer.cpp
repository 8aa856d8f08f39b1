#include "metadata/tiff_raw.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  for (const auto find : {FindNefPreview, FindOrfPreview, FindPefPreview, FindMrwPreview, FindRafPreview}) find(source);
  for (const auto base : {std::uint64_t{0}, kMrwTiffBase, FindRafTiffBase(source)}) {
    ReadTiffOrientation(source, base);
    ReadTiffOrientation(source, base, TiffMagic::Any);
  }
  return 0;
}
