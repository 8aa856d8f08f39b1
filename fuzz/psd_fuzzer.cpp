#include "metadata/icc_carriers.h"
#include "metadata/psd_resources.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = FuzzSource(data, size);
  ml::metadata::ReadPsdFile(source);
  ml::metadata::ReadPsdIccProfile(source);
  ml::metadata::ReadPsdResources(source, {0, size});
  return 0;
}
