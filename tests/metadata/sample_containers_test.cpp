#include <gtest/gtest.h>

#include "metadata/bmp_size.h"
#include "metadata/crw_file.h"
#include "metadata/gif_size.h"
#include "metadata/jp2_boxes.h"
#include "metadata/png_chunks.h"
#include "metadata/psd_resources.h"
#include "metadata/riff.h"
#include "metadata/sample_reference.h"
#include "metadata/tiff_facts.h"
#include "platform/paths.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using Size = std::pair<int, int>;

template <class Picture>
std::optional<Size> SizeOf(const std::optional<Picture>& picture) {
  if (!picture) return std::nullopt;
  return Size(static_cast<int>(picture->width), static_cast<int>(picture->height));
}

struct SizeReader {
  std::string_view extension;
  std::string_view group;  ///< of the reference's fields
  std::optional<Size> (*read)(const ByteSource&);
};
constexpr SizeReader kReaders[] = {
    {".png", "PNG", [](const ByteSource& source) { return SizeOf(ReadPngInfo(source)); }},
    {".psd", "Photoshop", [](const ByteSource& source) { return SizeOf(ReadPsdFile(source)); }},
    {".jp2", "Jpeg2000", [](const ByteSource& source) { return SizeOf(ReadJp2File(source)); }},
    {".gif", "GIF", [](const ByteSource& source) { return SizeOf(ReadGifSize(source)); }},
    {".bmp", "File", [](const ByteSource& source) { return SizeOf(ReadBmpSize(source)); }},
    {".avi", "File", [](const ByteSource& source) { return SizeOf(ReadAviFile(source)); }},
    {".tif", "IFD0", [](const ByteSource& source) { return SizeOf(ReadTiffFacts(source)); }},
};

TEST(SampleContainers, SizesAgreeWithTheReference) {
  const auto reference = test::SampleReference();
  int compared = 0;
  for (const auto& [name, record] : reference.items()) {
    const auto& raw = record.at("raw");
    for (const auto& reader : kReaders) {
      const auto field = [&](const char* side) { return std::string(reader.group) + ":" + side; };
      // The first directory of a raw file may tell the size of a thumbnail.
      const bool fits = platform::EndsWithNoCase(name, reader.extension) && !name.starts_with("tiff-raw/");
      if (!fits || !raw.contains(field("ImageWidth"))) continue;
      const platform::ReadableFile file(*test::SamplesDir() + "/" + name);
      const Size expected(raw.at(field("ImageWidth")).get<int>(), raw.at(field("ImageHeight")).get<int>());
      ++compared;
      EXPECT_EQ(reader.read(FileSource(file)), expected) << name;
    }
  }
  EXPECT_TRUE(reference.empty() || compared > 40) << compared;
}

TEST(SampleContainers, CrwValuesAgreeWithTheReference) {
  const auto reference = test::SampleReference();
  for (const auto& [name, record] : reference.items()) {
    if (!name.ends_with(".crw")) continue;
    const auto& raw = record.at("raw");
    const platform::ReadableFile file(*test::SamplesDir() + "/" + name);
    const FileSource source(file);
    const auto basics = ReadCrwBasics(source);
    EXPECT_EQ(basics.rotation, raw.at("CanonRaw:Rotation").get<int>()) << name;
    EXPECT_EQ(basics.fileNumber, raw.at("CanonRaw:FileNumber").get<unsigned>()) << name;
    const auto settings = ReadCrwSettings(source);
    EXPECT_EQ(settings.whiteBalance, raw.at("Canon:WhiteBalance").get<int>()) << name;
    EXPECT_EQ(settings.colorTemperature.value_or(0), raw.value("CanonRaw:ColorTemperature", 0)) << name;
    EXPECT_EQ(settings.colorSpace.value_or(0), raw.value("CanonRaw:ColorSpace", 0)) << name;
  }
}

}  // namespace
}  // namespace ml::metadata
