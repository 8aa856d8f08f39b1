#include "metadata/canon/crw_properties.h"
#include "metadata/ciff.h"
#include "metadata/crw_file.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  Refusable([&] { ReadCrwBasics(source); });
  Refusable([&] { ReadCrwSettings(source); });
  Refusable([&] { ReadCiffRecords(source); });
  ExifData record;
  ReadCrwProperties(record, source);
  FindCrwPreview(source);
  return 0;
}
