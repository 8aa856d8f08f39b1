#include "imaging/tiff/turned_tiff.h"
#include "metadata/edit/exif_dates_writer.h"
#include "metadata/edit/ifd_entry_writer.h"
#include "metadata/edit/iptc_tiff.h"
#include "metadata/edit/tiff_comment.h"
#include "metadata/edit/tiff_image_data.h"
#include "metadata/exif_reader.h"

#include "fuzz_source.h"

namespace {

/// One edit of the file as it came; ends with the two refusals that are promised.
template <class Edit>
void Try(const ml::metadata::ByteSource& source, Edit&& edit) {
  ml::metadata::EditedFile file(source);
  try {
    edit(file);
  } catch (ml::metadata::ExifException) {
  } catch (const ml::platform::LibraryError&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ml::metadata;
  const auto source = FuzzSource(data, size);
  Try(source, [](EditedFile& file) {
    UpdateIfdEntry(file, {.tag = 274, .value = 6});
    RequireSameImageData(file, 0, TiffMagic::Required);
  });
  Try(source, [](EditedFile& file) {
    WriteTiffIptc(file, {.items = {{2, 120, "a caption"}}});
    WriteTiffIptc(file, {});
  });
  Try(source, [](EditedFile& file) {
    ExifData record;
    ReadTiffFile(record, file, 0, TiffMagic::Required);
    WriteTiffComment(file, record, "a comment");
    WriteExifDates(file, 0, "2003:05:17 10:11:12");
  });
  Try(source, [](EditedFile& file) { ml::imaging::TurnTiff(file, ml::imaging::Turn::cw90); });
  return 0;
}
