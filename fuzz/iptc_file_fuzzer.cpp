#include "metadata/iptc/iptc_file.h"

#include <cstdlib>

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const ByteView bytes(std::as_bytes(std::span(data, size)), ByteOrder::Big);
  Refusable([&] {
    const auto items = ParseIptcFile("a.ipt", bytes);
    const auto built = BuildIptcFile(items);
    const ByteView again(std::as_bytes(std::span(built)), ByteOrder::Big);
    if (ParseIptcFile("b.ipt", again) != items) std::abort();
  });
  return 0;
}
