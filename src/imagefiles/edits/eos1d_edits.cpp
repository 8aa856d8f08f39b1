#include "imagefiles/edits/eos1d_edits.h"

#include "imagefiles/edits/companion_edits.h"
#include "imagefiles/edits/tiff_edits.h"
#include "metadata/exif_block.h"
#include "metadata/iptc/iptc_caption.h"
#include "metadata/tiff_raw.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

std::string ViewingJpegOf(const ImageFile& file, const EditTools& tools) {
  return tools.companions.Find(file.Path()).jpg;
}

int RecordedDegrees(const ImageFile& file, const EditTools& tools) {
  const platform::ReadableFile raw(file.Path(), *tools.edit.fileSystem);
  const auto orientation = metadata::ReadTiffOrientation(metadata::FileSource(raw), 0);
  return metadata::DegreesOfOrientation(orientation.value_or(1)).value_or(0);
}

}  // namespace

void RotateEos1D(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  RotateByTag(file, turn, tools);
  OrientCompanion(ViewingJpegOf(file, tools), RecordedDegrees(file, tools), tools);
}

void SetEos1DComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  const auto jpeg = ViewingJpegOf(file, tools);
  if (tools.options.iptcComments && !jpeg.empty()) {
    WriteCompanionIptc(jpeg, metadata::WithCaption(file.Exif(), text), tools);
  }
  SetTiffComment(file, text, tools);
}

void WriteIptcToEos1D(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools) {
  WriteCompanionIptc(ViewingJpegOf(file, tools), block, tools);
  WriteIptcToTiff(file, block, tools);
}

void AdjustEos1DDates(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  AdjustTiffDates(file, seconds, tools);
  AdjustCompanionDates(ViewingJpegOf(file, tools), seconds, tools);
}

}  // namespace ml::imagefiles
