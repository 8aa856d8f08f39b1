#include "metadata/exif_dates.h"
#include "metadata/exif_reader.h"
#include "metadata/xmp_scan.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  for (const auto base : {std::uint64_t{0}, kMrwTiffBase, FindRafTiffBase(source)}) {
    ExifData file;
    ReadTiffFile(file, source, base, TiffMagic::Any);
  }
  try {
    ExifData jpeg;
    ReadJpegSegments(jpeg, source);
  } catch (ExifException) {
    ReadJpegDate(source);  // the one sign of a broken block
  }
  ReadJpegDate(source);
  ReadTiffDate(source);
  FindXmpPacket(source);
  return 0;
}
