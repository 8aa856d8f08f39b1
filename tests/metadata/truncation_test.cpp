#include "support/truncation_sweep.h"

#include "metadata/crw_file.h"
#include "metadata/exif_data.h"
#include "metadata/exif_dates.h"
#include "metadata/gif_size.h"
#include "metadata/icc_carriers.h"
#include "metadata/jpeg_size.h"
#include "metadata/tiff_facts.h"
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
/// Those which have no sweep among tests of their own.
const Reader kReaders[] = {
    {"JpegSize", ".jpg", [](const auto& source) { return ReadJpegSize(source).has_value(); }},
    {"JpegDate", ".jpg", [](const auto& source) { return ReadJpegDate(source).has_value(); }},
    {"TiffDate", ".tif", [](const auto& source) { return ReadTiffDate(source).has_value(); }},
    {"TiffProfile", ".tif", [](const auto& source) { return ReadTiffIccProfile(source).has_value(); }},
    {"CrwSettings", ".crw", [](const auto& source) { return ReadCrwSettings(source).colorTemperature == 5200; }},
    {"PsdProfile", ".psd", [](const auto& source) { return ReadPsdIccProfile(source).has_value(); }},
    {"Jp2Profile", ".jp2", [](const auto& source) { return ReadJp2IccProfile(source).has_value(); }},
    {"Jp2Xmp", ".jp2", [](const auto& source) { return !FindXmpPacket(source).empty(); }},
    {"GifSize", ".gif", [](const auto& source) { return ReadGifSize(source).has_value(); }},
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
