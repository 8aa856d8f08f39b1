#include "imaging/tiff/uncompressed_tiff.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/errors.h"
#include "support/picture_tiff.h"
#include "support/temp_dir.h"
#include "support/truncation_sweep.h"

namespace ml::imaging {
namespace {

using test::Endian;
using test::TiffBuilder;

PixelBuffer Read(const std::string& file) {
  return ReadUncompressedTiff(metadata::MemorySource(std::as_bytes(std::span(file))));
}
std::string Refusal(const std::string& file) {
  try {
    Read(file);
    return "read";
  } catch (const platform::UserError& error) {
    return error.what();
  }
}
/// The high bytes of the samples.
std::string HighBytes(const PixelBuffer& pixels) {
  std::string out;
  for (std::size_t i = 0; i < pixels.data.size(); i += static_cast<std::size_t>(pixels.bytesPerSample)) {
    std::uint16_t value = std::to_integer<std::uint16_t>(pixels.data[i]);
    if (pixels.bytesPerSample == 2) {
      std::memcpy(&value, &pixels.data[i], 2);
      value = static_cast<std::uint16_t>(value >> 8);
    }
    out += static_cast<char>(value);
  }
  return out;
}

TEST(UncompressedTiff, EveryLayoutGivesThePicture) {
  const auto picture = test::PaintLandscape(13, 11, 3);
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const int bits : {8, 16}) {
      for (const bool planar : {false, true}) {
        for (const int rows : {0, 1, 4}) {
          const auto file =
              test::PictureDirectory(picture, {.order = order, .bits = bits, .planar = planar, .rowsPerStrip = rows});
          const auto pixels = Read(file.Build());
          ASSERT_EQ(std::tuple(pixels.width, pixels.height, pixels.bytesPerSample), std::tuple(13, 11, bits / 8));
          EXPECT_EQ(HighBytes(pixels), picture.rgb) << bits << planar << rows;
        }
      }
    }
  }
}

TEST(UncompressedTiff, GreyBecomesThreeChannels) {
  const auto build = [](int photometric) {
    return TiffBuilder()
        .Long(256, 2)
        .Long(257, 1)
        .Short(258, 8)
        .Short(262, static_cast<std::uint32_t>(photometric))
        .Pieces(273, 279, {"\x10\x20"})
        .Build();
  };
  EXPECT_EQ(HighBytes(Read(build(1))), "\x10\x10\x10\x20\x20\x20");
  EXPECT_EQ(HighBytes(Read(build(0))), "\xef\xef\xef\xdf\xdf\xdf");
}

TEST(UncompressedTiff, ExtraSamplesAreLeftOut) {
  const auto file = TiffBuilder()
                        .Long(256, 2)
                        .Long(257, 1)
                        .Short(258, {8, 8, 8, 8})
                        .Short(262, 2)
                        .Short(277, 4)
                        .Pieces(273, 279, {"abcXdefX"})
                        .Build();
  EXPECT_EQ(HighBytes(Read(file)), "abcdef");
}

TEST(UncompressedTiff, RefusalsNameTheReason) {
  const auto good = test::PictureDirectory(test::PaintPlain(4, 4, 0), {});
  const auto with = [&](int tag, const auto& change) {
    auto tiff = good;
    tiff.Without(tag);
    change(tiff);
    return tiff.Build();
  };
  const std::pair<std::string, std::string> cases[] = {
      {good.Build(), "read"},
      {"no TIFF", "Invalid TIFF"},
      {with(259, [](auto& t) { t.Short(259, 5); }), "Only reads uncompressed"},
      {with(258,
            [](auto& t) {
              t.Short(258, {8, 8, 16});
            }),
       "Unexpected BitsPerSample"},
      {with(258,
            [](auto& t) {
              t.Short(258, {32, 32, 32});
            }),
       "Unexpected BitsPerSample"},
      {with(258, [](auto& t) { t.Raw(258, 3, 3, 0xffffff); }), "fseek error in BitsPerSample"},
      {with(262, [](auto& t) { t.Short(262, 3); }), "Only reads grey and RGB images in strips"},
      {with(277, [](auto& t) { t.Short(277, 2); }), "Only reads grey and RGB images in strips"},
      {with(322, [](auto& t) { t.Short(322, 16); }), "Only reads grey and RGB images in strips"},
      {with(256, [](auto& t) { t.Long(256, 0); }), "The image is too large or has no size"},
      {with(256, [](auto& t) { t.Long(256, 30'000'000); }), "The image is too large or has no size"},
      {with(257, [](auto& t) { t.Long(257, 9'000'000); }), "The file ends before the image does"},
      {with(273, [](auto& t) { t.Long(273, 0xfffffff0); }), "The file ends before the image does"},
      {with(273, [](auto&) {}), "The file ends before the image does"},
  };
  for (const auto& [file, sentence] : cases) EXPECT_EQ(Refusal(file), sentence);
}

TEST(UncompressedTiff, EveryPrefixIsRefused) {
  const auto file = test::PictureDirectory(test::PaintPlain(9, 9, 0x102030), {.rowsPerStrip = 2}).Build();
  test::ForEachPrefix(file, [&](const std::string& prefix) {
    EXPECT_EQ(Refusal(prefix) == "read", prefix.size() == file.size()) << prefix.size();
  });
}

TEST(UncompressedTiff, RealFiles) {
  const auto samples = test::SamplesDir();
  if (!samples) return;
  for (const std::string name : {"rgb-8bit-ii-strips", "rgb-8bit-mm", "rgb-16bit-mm", "grey-16bit"}) {
    EXPECT_EQ(Refusal(*test::ReadAll(*samples + "/tiff/" + name + ".tif")), "read") << name;
  }
}

}  // namespace
}  // namespace ml::imaging
