#include "metadata/exif_block.h"
#include "metadata/icc_carriers.h"
#include "metadata/jpeg_size.h"

#include "fuzz_source.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  ReadJpegIccProfile(source);
  ReadJpegSize(source);
  ReadOrientationFromExif(source);
  FindExifThumbnails(source);
  return 0;
}
