#include "imaging/writers/write_image.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "imaging/decoding.h"
#include "imaging/jp2/jp2_encoder.h"
#include "imaging/jp2/jp2_reader.h"
#include "imaging/png/png_decoder.h"
#include "imaging/writers/metadata_segments.h"
#include "metadata/icc_carriers.h"
#include "metadata/ifd.h"
#include "metadata/png_chunks.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "support/colour_profiles.h"
#include "support/fakes.h"
#include "support/fault_sweep.h"
#include "support/temp_dir.h"

namespace ml::imaging {
namespace {

constexpr WrittenFormat kFormats[] = {WrittenFormat::Jpeg, WrittenFormat::Jpeg2000, WrittenFormat::Png,
                                      WrittenFormat::Tiff};

/// Every sample another one.
PixelBuffer Ramp(int width, int height, int bytesPerSample, PixelOrder order = PixelOrder::Rgb) {
  auto pixels = MakePixelBuffer(width, height, order, bytesPerSample);
  for (std::size_t i = 0; i < pixels.data.size(); ++i) pixels.data[i] = static_cast<std::byte>(i * 37 + i / 256);
  return pixels;
}

std::vector<std::byte> BytesOf(const std::string& text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

std::string Written(WrittenFormat format, const PixelRows& pixels, const MetadataBlocks& blocks = {},
                    int quality = 100) {
  const test::TempDir dir;
  WriteImage(format, pixels, blocks, dir / "a", {.quality = quality});
  return test::ReadAll(dir / "a").value();
}

/// The sentence of the refusal, with "DIR" for the directory.
std::string Refused(const test::TempDir& dir, const std::function<void()>& act) {
  try {
    act();
  } catch (const platform::UserError& error) {
    return platform::ReplaceAll(error.what(), dir.Path(), "DIR");
  }
  return "written";
}

TEST(WriteImage, PngKeepsGreyPicturesInOneChannel) {
  auto grey = MakePixelBuffer(3, 2, PixelOrder::Rgb, 2);
  for (std::size_t i = 0; i < grey.data.size(); ++i) grey.data[i] = static_cast<std::byte>(i / 6 * 16 + i % 2);
  auto nearly = grey;
  nearly.data.back() ^= std::byte{1};
  const MetadataBlocks rgb{.icc = BytesOf(test::EncodeProfile({}))}, mono{.icc = BytesOf(test::GreyProfile())};
  struct Case {
    const char* name;
    const PixelBuffer& pixels;
    const MetadataBlocks& blocks;
    int colourType;
    bool hasProfile;
  };
  const Case cases[] = {{"grey", grey, mono, 0, true},
                        {"grey with a profile of colours", grey, rgb, 0, false},
                        {"one bit off", nearly, rgb, 2, true},
                        {"colours with a profile of grey", nearly, mono, 2, false}};
  for (const auto& c : cases) {
    const auto file = Written(WrittenFormat::Png, c.pixels, c.blocks);
    const auto bytes = BytesOf(file);
    const metadata::MemorySource source(bytes);
    const auto info = metadata::ReadPngInfo(source);
    ASSERT_TRUE(info) << c.name;
    EXPECT_EQ(info->colourType, c.colourType) << c.name;
    EXPECT_EQ(info->bitDepth, 16) << c.name;
    EXPECT_EQ(metadata::ReadPngIccProfile(source), c.hasProfile ? std::optional(c.blocks.icc) : std::nullopt) << c.name;
    const auto decoded = DecodePng(source);
    EXPECT_EQ(test::Samples(decoded.pixels).substr(0, 3), std::string(3, '\1')) << c.name;
  }
}

TEST(WriteImage, Jpeg2000LosesNothingFromQuality99On) {
  const std::pair<int, double> rates[] = {{-5, 0.01}, {0, 0.01}, {1, 0.01}, {50, 0.5}, {98, 0.98}, {99, 1}, {100, 1}};
  for (const auto& [quality, rate] : rates) EXPECT_EQ(RateOf(quality), rate) << quality;
  for (const auto& [width, height] : {std::pair(1, 1), std::pair(1025, 9), std::pair(9, 1025), std::pair(70, 41)}) {
    const auto pixels = Ramp(width, height, 2);
    const auto bytes = BytesOf(Written(WrittenFormat::Jpeg2000, pixels, {}, 99));
    const metadata::MemorySource source(bytes);
    Jp2Reader reader(source, 0, Jp2Reader::Content::BoxedFile, 1);
    reader.Decode(0);
    const auto components = reader.Components();
    ASSERT_EQ(components.size(), 3U);
    for (std::size_t i = 0; i < static_cast<std::size_t>(width * height) * 3; ++i) {
      std::uint16_t sample = 0;
      std::memcpy(&sample, pixels.data.data() + i * 2, 2);
      ASSERT_EQ(components[i % 3].samples[i / 3], sample) << width << " " << i;
    }
  }
}

TEST(WriteImage, ExifDataTellTheSizeOfWhatIsWritten) {
  constexpr std::uint16_t kExif = 34665, kWidth = 40962, kHeight = 40963;
  for (const char* make : {"Canon", "NIKON CORPORATION", ""}) {
    MetadataBlocks blocks;
    blocks.shooting.emplace();
    blocks.shooting->make = make;
    blocks.shooting->imageWidth = 3008, blocks.shooting->imageHeight = 2000;
    const auto tiff = ExifForBox(Ramp(40, 30, 1), blocks, 300);
    ASSERT_TRUE(tiff) << make;
    const metadata::MemorySource source(*tiff);
    const auto header = metadata::ReadTiffHeader(source, 0);
    metadata::IfdWalker walker(source, header->order, {.followNext = false});
    std::map<std::uint16_t, std::uint32_t> found;
    walker.Walk(header->firstDirectory, [&](const metadata::IfdEntry& entry) {
      if (entry.tag != kExif) return metadata::Visit::Continue;
      return walker.Walk(entry.value, [&](const metadata::IfdEntry& inner) {
        found[inner.tag] = inner.value;
        return metadata::Visit::Continue;
      });
    });
    EXPECT_EQ(found[kWidth], 40U) << make;
    EXPECT_EQ(found[kHeight], 30U) << make;
  }
}

TEST(WriteImage, RefusalsNameTheFileAndLeaveItAlone) {
  const test::TempDir dir;
  const auto path = dir.Write("a", "old");
  dir.Write("file", "");
  const auto pixels = Ramp(4, 3, 1), deep = Ramp(4, 3, 2);
  const auto with = [&](auto&& change) {
    PixelRows rows(pixels);
    change(rows);
    return rows;
  };
  MetadataBlocks longIptc;
  longIptc.iptc.items.assign(5, {2, 120, std::string(16'000, 'x')});
  constexpr auto kTooLarge = "The picture is too large for this kind of file";
  const std::string tiff = "ERROR: cannot write to TIFF file:\nDIR/a\n",
                    jpeg = "ERROR: cannot write to JPEG file:\nDIR/a\n";
  struct Case {
    WrittenFormat format;
    PixelRows pixels;
    std::string sentence, name = "a";
    MetadataBlocks blocks = {};
  };
  using enum WrittenFormat;
  const Case cases[] = {
      {Tiff, with([](auto& r) { r.bytesPerSample = 3; }), "ERROR: WriteTIFF() depth must be 1 or 2"},
      {Tiff, with([](auto& r) { r.channels = 4; }), "ERROR: WriteTIFF() channels must be 1 or 3"},
      {Tiff, with([](auto& r) { r.width = 65'536; }), tiff + kTooLarge},
      {Tiff, with([](auto& r) { r.width = r.height = 60'000; }), tiff + kTooLarge},
      {Jpeg, deep, jpeg + "A JPEG holds samples of 8 bits only"},
      {Jpeg, with([](auto& r) { r.height = 65'501; }), jpeg + kTooLarge},
      {Jpeg, pixels, jpeg + "The IPTC data are longer than the file can hold", "a", longIptc},
      {Png, with([](auto& r) { r.height = 0; }), "Error writing PNG\nDIR/a\nThe picture has no pixels"},
      {Jpeg2000, pixels, "ERROR: cannot write to JPEG2000 file:\nDIR/no/a\nUnable to write to directory:\nDIR/no",
       "no/a"},
      {Png, pixels, "Error writing PNG\nDIR/file/a\nNot a directory", "file/a"},
  };
  for (const auto& c : cases) {
    const auto sentence = Refused(dir, [&] { WriteImage(c.format, c.pixels, c.blocks, dir / c.name, {}); });
    EXPECT_TRUE(sentence.starts_with(c.sentence)) << sentence << "\ninstead of\n" << c.sentence;
    EXPECT_EQ(test::ReadAll(path), "old") << c.sentence;
  }
}

/// Asks to stop at the first report.
class Stopper final : public platform::NoProgress {
 public:
  explicit Stopper(std::stop_source& stop) : stop_(stop) {}
  void percent(int) override { stop_.request_stop(); }

 private:
  std::stop_source& stop_;
};

TEST(WriteImage, CancelledLeavesWhatWasThere) {
  for (const auto format : kFormats) {
    const test::TempDir dir;
    dir.Write("a", "old");
    for (const char* name : {"a", "new"}) {
      std::stop_source stop;
      Stopper stopper(stop);
      const WriteOptions options{.threads = 2, .progress = &stopper, .stop = stop.get_token()};
      EXPECT_THROW(WriteImage(format, Ramp(1100, 20, 1), {}, dir / name, options), platform::Cancelled);
    }
    EXPECT_EQ(test::ReadAll(dir / "a"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);
  }
}

TEST(WriteImage, FaultsLeaveTheOldFileOrTheNewOne) {
  const test::TempDir dir;
  const auto path = dir / "a";
  const auto pixels = Ramp(700, 600, 1);  // several pieces
  const auto whole = Written(WrittenFormat::Tiff, pixels, {});
  for (const auto fault : test::kFaults) {
    test::ScriptedInteraction ask;
    const auto prepare = [&] {
      for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) std::filesystem::remove(entry);
      dir.Write("a", "old");
    };
    const auto act = [&](platform::FileSystem& fileSystem) {
      WriteImage(WrittenFormat::Tiff, pixels, {}, path, {.ask = &ask, .file = {.fileSystem = &fileSystem}});
    };
    const auto verify = [&](test::Outcome outcome) {
      const auto content = test::ReadAll(path);
      EXPECT_TRUE(content == "old" || content == whole);
      EXPECT_TRUE(outcome != test::Outcome::Done || content == whole);
      for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
        EXPECT_TRUE(outcome == test::Outcome::Killed || entry.path().filename() == "a") << entry.path();
      }
    };
    EXPECT_GT(test::SweepFaults(fault, prepare, act, verify), 5);
    if (fault != test::Fault::Enospc && fault != test::Fault::DiskFull) continue;
    ASSERT_FALSE(ask.shown.empty());
    EXPECT_EQ(ask.shown.front().caption, "Debug Message");
    EXPECT_EQ(ask.shown.front().text, "ERROR: cannot write to TIFF file:\n" + path +
                                          "\nDisk may be full\nNo space left on device\nRow 0 of 600, width: 700, "
                                          "bytesPerPixel: 3, strip: 0");
  }
}

}  // namespace
}  // namespace ml::imaging
