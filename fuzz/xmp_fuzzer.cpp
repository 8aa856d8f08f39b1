#include "metadata/xmp.h"

#include "metadata/xmp_scan.h"
#include "metadata/xmp_values.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  const ByteView bytes(std::as_bytes(std::span(data, size)), ByteOrder::Big);
  ExifData whole, packet;
  ReadXmp(whole, bytes);
  const auto found = FindXmpPacket(source);
  ReadXmp(packet, ByteView(found, ByteOrder::Big));
  const auto text = bytes.Text(0, size);
  ParseRational(FirstLine(text));
  XmpDateText(text);
  FocalRangeOf(text);
  return 0;
}
