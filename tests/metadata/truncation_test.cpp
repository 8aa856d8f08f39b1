#include "support/truncation_sweep.h"

#include "metadata/bmp_size.h"
#include "metadata/ciff.h"
#include "metadata/crw_file.h"
#include "metadata/exif_block.h"
#include "metadata/exif_data.h"
#include "metadata/exif_dates.h"
#include "metadata/gif_size.h"
#include "metadata/icc_carriers.h"
#include "metadata/jp2_boxes.h"
#include "metadata/jpeg_size.h"
#include "metadata/png_chunks.h"
#include "metadata/psd_resources.h"
#include "metadata/riff.h"
#include "metadata/tiff_facts.h"
#include "metadata/tiff_raw.h"
#include "metadata/xmp_scan.h"
#include "platform/errors.h"
#include "support/small_files.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using platform::UserError;

struct Reader {
  const char* name;
  const char* extension;
  bool (*read)(const ByteSource&);  ///< whether there was something
};
const Reader kReaders[] = {
    {"JpegOrientation", ".jpg", [](const auto& source) { return ReadOrientationFromExif(source).has_value(); }},
    {"JpegThumbnails", ".jpg", [](const auto& source) { return !FindExifThumbnails(source).empty(); }},
    {"JpegSize", ".jpg", [](const auto& source) { return ReadJpegSize(source).has_value(); }},
    {"JpegDate", ".jpg", [](const auto& source) { return ReadJpegDate(source).has_value(); }},
    {"JpegProfile", ".jpg", [](const auto& source) { return ReadJpegIccProfile(source).has_value(); }},
    {"TiffFacts", ".tif", [](const auto& source) { return ReadTiffFacts(source).has_value(); }},
    {"TiffDate", ".tif", [](const auto& source) { return ReadTiffDate(source).has_value(); }},
    {"TiffProfile", ".tif", [](const auto& source) { return ReadTiffIccProfile(source).has_value(); }},
    {"NefOrientation", ".nef", [](const auto& source) { return ReadTiffOrientation(source, 0).has_value(); }},
    {"NefPreview", ".nef", [](const auto& source) { return FindNefPreview(source).has_value(); }},
    {"OrfPreview", ".orf", [](const auto& source) { return FindOrfPreview(source).has_value(); }},
    {"PefPreview", ".pef", [](const auto& source) { return FindPefPreview(source).has_value(); }},
    {"MrwPreview", ".mrw", [](const auto& source) { return FindMrwPreview(source).has_value(); }},
    {"RafPreview", ".raf", [](const auto& source) { return FindRafPreview(source).has_value(); }},
    {"CrwBasics", ".crw", [](const auto& source) { return ReadCrwBasics(source).rotation == 90; }},
    {"CrwSettings", ".crw", [](const auto& source) { return ReadCrwSettings(source).colorTemperature == 5200; }},
    {"CrwPreview", ".crw", [](const auto& source) { return FindCrwPreview(source).has_value(); }},
    {"CiffRecords", ".crw", [](const auto& source) { return ReadCiffRecords(source).size() > 10; }},
    {"PngTexts", ".png", [](const auto& source) { return ReadPngInfo(source).value_or(PngInfo{}).texts.size() == 3; }},
    {"PngProfile", ".png", [](const auto& source) { return ReadPngIccProfile(source).has_value(); }},
    {"PsdFile", ".psd", [](const auto& source) { return ReadPsdFile(source).value_or(PsdFile{}).mergedImage > 0; }},
    {"PsdProfile", ".psd", [](const auto& source) { return ReadPsdIccProfile(source).has_value(); }},
    {"Jp2File", ".jp2",
     [](const auto& source) {
       const auto file = ReadJp2File(source);
       return file && file->FindUuid(source, kIptcUuid).has_value();
     }},
    {"Jp2Profile", ".jp2", [](const auto& source) { return ReadJp2IccProfile(source).has_value(); }},
    {"Jp2Xmp", ".jp2", [](const auto& source) { return !FindXmpPacket(source).empty(); }},
    {"AviFile", ".avi", [](const auto& source) { return ReadAviFile(source).value_or(AviFile{}).IsMotionJpeg(); }},
    {"GifSize", ".gif", [](const auto& source) { return ReadGifSize(source).has_value(); }},
    {"BmpSize", ".bmp", [](const auto& source) { return ReadBmpSize(source).has_value(); }},
};

class TruncatedFile : public testing::TestWithParam<Reader> {};

TEST_P(TruncatedFile, EndsCleanlyAtEveryLength) {
  const auto& [name, extension, read] = GetParam();
  const auto& whole = test::SmallFileWith(extension).content;
  EXPECT_TRUE(read(MemorySource(std::as_bytes(std::span(whole)))));
  test::SweepPrefixes<UserError>(whole, [&](auto prefix) { read(MemorySource(prefix)); });
}

INSTANTIATE_TEST_SUITE_P(Readers, TruncatedFile, testing::ValuesIn(kReaders),
                         [](const auto& c) { return std::string(c.param.name); });

class TruncatedImage : public testing::TestWithParam<test::SmallFile> {};

TEST_P(TruncatedImage, GivesARecordAtEveryLength) {
  const test::TempDir dir;
  const auto path = dir.Write(GetParam().file, GetParam().content);
  EXPECT_FALSE(ExifData(path).exifInvalid);
  test::SweepPrefixFiles(path, [](const auto& file) { EXPECT_EQ(ExifData(file).path, file); });
}

INSTANTIATE_TEST_SUITE_P(Kinds, TruncatedImage, testing::ValuesIn(test::SmallFiles()),
                         [](const auto& c) { return c.param.name; });

}  // namespace
}  // namespace ml::metadata
