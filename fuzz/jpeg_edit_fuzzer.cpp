#include <cstdlib>
#include <tuple>
#include <vector>

#include "metadata/edit/exif_block_writer.h"
#include "metadata/edit/exif_dates_writer.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/edit/multi_picture.h"
#include "metadata/edit/orientation_writer.h"
#include "platform/errors.h"

#include "fuzz_source.h"

using namespace ml::metadata;

namespace {

std::vector<std::byte> Thumbnail(int) { return std::vector<std::byte>(3000, std::byte('T')); }

using Edit = void (*)(EditedFile&);
constexpr Edit kEdits[] = {
    [](EditedFile& e) { std::ignore = WriteJpegComment(e, "A comment of some length", Thumbnail); },
    [](EditedFile& e) { WriteJpegThumbnail(e, Thumbnail); },
    [](EditedFile& e) { WriteJpegDates(e, "2010:11:12 13:14:15"); },
    [](EditedFile& e) { WriteOrientationToExif(e, 90); },
    [](EditedFile& e) { RealignMultiPicture(e); },
};

}  // namespace

/// What an edit refuses it leaves alone, and none touches the picture.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = FuzzSource(data, size);
  EditedFile edited(source);
  for (const auto edit : kEdits) {
    try {
      edit(edited);
    } catch (const ml::platform::UserError&) {
      continue;
    } catch (ExifException) {
      continue;
    }
  }
  const auto before = CompressedData(source), after = CompressedData(edited);
  if (!SameBytes(source, before, edited, after)) std::abort();
  return 0;
}
