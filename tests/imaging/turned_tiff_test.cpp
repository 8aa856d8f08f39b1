#include "imaging/tiff/turned_tiff.h"

#include <gtest/gtest.h>

#include <string>

#include "imaging/tiff/tiff_reader.h"
#include "metadata/edit/ifd_directory.h"
#include "metadata/tiff_facts.h"
#include "platform/errors.h"
#include "platform/readable_file.h"
#include "support/metadata_blocks.h"
#include "support/picture_tiff.h"
#include "support/temp_dir.h"
#include "support/truncation_sweep.h"

namespace ml::imaging {
namespace {

using metadata::EditedFile;
using metadata::MemorySource;
using metadata::TiffMagic;
using test::Endian;
using test::TiffBuilder;

std::span<const std::byte> Bytes(const std::string& text) { return std::as_bytes(std::span(text)); }

std::string Text(const metadata::ByteSource& source) {
  const auto bytes = source.Read(0, static_cast<std::size_t>(source.Size()));
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string TurnedFile(const std::string& file, Turn turn) {
  const MemorySource source(Bytes(file));
  EditedFile edited(source);
  TurnTiff(edited, turn);
  return Text(edited);
}

std::uint32_t FirstDirectory(const std::string& file) {
  return metadata::ReadTiffHeader(MemorySource(Bytes(file)), 0)->firstDirectory;
}

TiffSamples Samples(const std::string& file, std::uint32_t directory = 0) {
  const MemorySource source(Bytes(file));
  return TiffReader(source).Read(directory != 0 ? directory : FirstDirectory(file)).samples;
}

/// One byte or several bits a pixel, as numbers.
std::vector<int> Pixels(const TiffSamples& samples) {
  std::vector<int> pixels;
  for (std::uint32_t y = 0; y < samples.height; ++y) {
    for (std::uint32_t x = 0; x < samples.width; ++x) {
      const auto bit = x * samples.bitsPerSample;
      const auto byte = std::to_integer<int>(samples.data[y * samples.RowBytes() + bit / 8]);
      pixels.push_back(byte >> (8 - samples.bitsPerSample - bit % 8) & ((1 << samples.bitsPerSample) - 1));
    }
  }
  return pixels;
}

/// Three pixels across and two down, palette or grey, in rows of their own strips.
TiffBuilder Small(int bits, const std::vector<std::string>& rows) {
  TiffBuilder tiff;
  tiff.Long(256, 3).Long(257, 2).Short(258, static_cast<std::uint32_t>(bits)).Short(259, 1).Short(262, 1);
  return tiff.Pieces(273, 279, rows).Short(277, 1).Short(278, 1).Rational(282, 300).Rational(283, 150).Short(296, 2);
}

TEST(TurnedTiff, PutsEachPixelAtItsPlaceAtAnyDepth) {
  using namespace std::string_literals;
  const TiffBuilder files[] = {Small(8, {"\1\2\3", "\4\5\6"}), Small(4, {"\x12\x30", "\x45\x60"})};
  for (const auto& tiff : files) {
    const auto file = tiff.Build();
    ASSERT_EQ(Pixels(Samples(file)), (std::vector{1, 2, 3, 4, 5, 6}));
    const auto right = Samples(TurnedFile(file, Turn::cw90));
    EXPECT_EQ(right.width, 2U);
    EXPECT_EQ(Pixels(right), (std::vector{4, 1, 5, 2, 6, 3}));
    EXPECT_EQ(Pixels(Samples(TurnedFile(file, Turn::half))), (std::vector{6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(Pixels(Samples(TurnedFile(file, Turn::cw270))), (std::vector{3, 6, 2, 5, 1, 4}));
  }
  const auto bits = Small(1, {"\xa0"s, "\x40"s}).Build();
  EXPECT_EQ(Pixels(Samples(TurnedFile(bits, Turn::cw90))), (std::vector{0, 1, 1, 0, 0, 1}));
}

TEST(TurnedTiff, FourTurnsGiveTheSamePictureInEveryLayout) {
  const auto picture = test::PaintLandscape(301, 211, 5);
  for (const auto order : {Endian::Little, Endian::Big}) {
    for (const int bits : {8, 16}) {
      for (const bool grey : {false, true}) {
        for (const bool planar : {false, true}) {
          const auto file = test::PictureDirectory(picture, {order, bits, grey, planar, 7}).Short(274, 6).Build();
          auto turned = file;
          for (int i = 0; i < 4; ++i) turned = TurnedFile(turned, Turn::cw90);
          EXPECT_EQ(Samples(turned).data, Samples(file).data);
          EXPECT_LE(turned.size(), file.size() + 16) << "files must not grow with each turn";
        }
      }
    }
  }
}

TEST(TurnedTiff, KeepsAllPicturesAndEverythingAroundThem) {
  const auto order = Endian::Big;
  const auto note = TiffBuilder(order).Ascii(1, "a value of the maker's note");
  const auto exif = TiffBuilder(order).Note(37500, "Nikon\0\x01\0", note).Long(40962, 90).Long(40963, 50);
  const auto iptc = test::IptcBlock({{120, "The caption"}});
  auto first = test::PictureDirectory(test::PaintLandscape(90, 50, 1), {.order = order});
  first.Without(282).Rational(282, 300).Without(283).Rational(283, 150).Short(274, 6).Ascii(271, "Some maker");
  first.Undefined(33723, iptc).Bytes(700, "<x:xmpmeta/>").Undefined(34675, test::IccProfile("Screen"));
  first.Directory(34665, exif)
      .SubDirectories({test::PictureDirectory(test::PaintLandscape(9, 5, 1), {.order = order})});
  const auto second = test::PictureDirectory(test::PaintLandscape(40, 70, 2), {.order = order, .bits = 16});
  const auto file = TiffBuilder(first).Next(second).Build();
  const auto turned = TurnedFile(file, Turn::cw90);

  const MemorySource source(Bytes(turned));
  const auto directory = metadata::ReadFirstDirectory(source, 0, TiffMagic::Required);
  EXPECT_TRUE(std::ranges::is_sorted(directory.entries, {}, &metadata::IfdEntry::tag));
  EXPECT_EQ(metadata::ReadTiffOrientation(source, 0), 1U);
  EXPECT_EQ(directory.Find(330), nullptr);
  // What other places of the file point to stands where it stood.
  for (const auto* text : {"a value of the maker's note", "Some maker", "The caption", "<x:xmpmeta/>"}) {
    EXPECT_EQ(turned.find(text), file.find(text)) << text;
  }
  const auto value = [&](std::uint16_t tag) {
    const auto* entry = directory.Find(tag);
    return metadata::IfdValueRange(directory, static_cast<std::size_t>(entry - directory.entries.data()));
  };
  EXPECT_EQ(turned.substr(value(33723).position, value(33723).size), iptc);
  EXPECT_EQ(source.ReadNumber(value(282).position, 4, metadata::ByteOrder::Big), 150U);
  EXPECT_EQ(source.ReadNumber(value(283).position, 4, metadata::ByteOrder::Big), 300U);
  const auto newExif = metadata::ReadIfdDirectory(source, metadata::ByteOrder::Big, 0, directory.Find(34665)->rawValue);
  EXPECT_EQ(newExif.Find(40962)->value, 50U);
  EXPECT_EQ(newExif.Find(40963)->value, 90U);

  const auto old = metadata::ReadFirstDirectory(MemorySource(Bytes(file)), 0, TiffMagic::Required);
  EXPECT_EQ(Samples(turned).data, Turned(Samples(file), Turn::cw90).data);
  EXPECT_EQ(Samples(turned, directory.next).data, Turned(Samples(file, old.next), Turn::cw90).data);
}

TEST(TurnedTiff, RefusesTheWholeFileForOnePictureThatCannotBeRead) {
  const auto good = test::PictureDirectory(test::PaintLandscape(20, 10, 1));
  const auto broken = TiffBuilder(good).Without(273).Long(273, 1'000'000);
  const auto twelve = TiffBuilder(good).Without(258).Short(258, {12, 12, 12});
  auto loop = TiffBuilder(good).Build();
  const auto directory = FirstDirectory(loop);
  const auto link = directory + 2 + 12 * good.EntryCount();
  loop.replace(link, 4, loop.substr(4, 4));
  for (const auto& file : {TiffBuilder(good).Next(broken).Build(), TiffBuilder(good).Next(twelve).Build(), loop,
                           TiffBuilder(good).Magic(43).Build(), std::string("II*")}) {
    EXPECT_THROW(TurnedFile(file, Turn::cw90), platform::LibraryError);
  }
  test::ForEachPrefix(TiffBuilder(good).Next(good).Build(), [](const std::string& prefix) {
    try {
      TurnedFile(prefix, Turn::cw90);
    } catch (const platform::LibraryError&) {
    } catch (metadata::ExifException) {
    }
  });
}

TEST(TurnedTiff, MakesCompressedSamplesUncompressedOnes) {
  const auto samples = test::SamplesDir();
  if (!samples) GTEST_SKIP() << "no sample files";
  for (const auto* name : {"rgb-8bit-lzw.tif", "rgb-16bit-lzw.tif", "rgb-deflate-icc-xmp.tif", "jpeg-in-tiff.tif",
                           "bilevel-g4.tif", "rgb-8bit-tiled.tif", "multipage.tif"}) {
    SCOPED_TRACE(name);
    const auto file = *test::ReadAll(*samples + "/tiff/" + name);
    const auto turned = TurnedFile(file, Turn::cw270);
    const auto facts = metadata::ReadTiffFacts(MemorySource(Bytes(turned)));
    EXPECT_EQ(facts->compression, 1U);
    EXPECT_FALSE(facts->tiled);
    EXPECT_EQ(Samples(turned).data, Turned(Samples(file), Turn::cw270).data);
  }
}

}  // namespace
}  // namespace ml::imaging
