#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "imaging/colour/colour_profile.h"
#include "imaging/colour/transform_picture.h"
#include "support/colour_profiles.h"
#include "support/temp_dir.h"
#include "support/truncation_sweep.h"

namespace ml::imaging {
namespace {

using Pixel = std::array<int, 3>;

std::vector<std::byte> BytesOf(const std::string& text) {
  const auto* first = reinterpret_cast<const std::byte*>(text.data());
  return {first, first + text.size()};
}
ProfileSource Source(const std::string& profile) { return ProfileSource(BytesOf(profile)); }

/// Two rows of three pixels of one colour, with a padding of 0xaa.
PixelBuffer Plain(const Pixel& rgb, PixelOrder order, int stride) {
  auto buffer = MakePixelBuffer(3, 2, order);
  buffer.stride = stride;
  buffer.data.assign(buffer.RowBytes() * 2, std::byte{0xaa});
  for (int y = 0; y < buffer.height; ++y) {
    for (int i = 0; i < buffer.width * 3; ++i) {
      const int channel = order == PixelOrder::Bgr ? 2 - i % 3 : i % 3;
      buffer.Row(y)[i] = static_cast<std::byte>(rgb[static_cast<std::size_t>(channel)]);
    }
  }
  return buffer;
}

/// Within one step, which is what rounding may make of it.
void ExpectNear(const PixelBuffer& actual, const PixelBuffer& expected) {
  ASSERT_EQ(actual.data.size(), expected.data.size());
  for (std::size_t i = 0; i < actual.data.size(); ++i) {
    EXPECT_NEAR(std::to_integer<int>(actual.data[i]), std::to_integer<int>(expected.data[i]), 1) << "at byte " << i;
  }
}

TEST(TransformPicture, ChangesTheColoursOfTheShownPixelsOnly) {
  const auto swapped = Source(test::EncodeProfile({.swapped = true})), plain = Source(test::EncodeProfile({}));
  for (const auto order : {PixelOrder::Rgb, PixelOrder::Bgr}) {
    for (const int stride : {3, 4}) {
      for (const auto intent : {RenderingIntent::Perceptual, RenderingIntent::AbsoluteColorimetric}) {
        auto picture = Plain({200, 30, 90}, order, stride);
        EXPECT_TRUE(TransformPicture(picture, swapped, plain, intent));
        ExpectNear(picture, Plain({90, 30, 200}, order, stride));
      }
    }
  }
}

TEST(TransformPicture, IntentDecidesOnTheWhiteOfThePaper) {
  const auto paper = Source(test::EncodeProfile({.mediaWhite = 0.5})), plain = Source(test::EncodeProfile({}));
  auto picture = Plain({255, 255, 255}, PixelOrder::Rgb, 3);
  EXPECT_TRUE(TransformPicture(picture, paper, plain, RenderingIntent::Perceptual));
  ExpectNear(picture, Plain({255, 255, 255}, PixelOrder::Rgb, 3));
  EXPECT_TRUE(TransformPicture(picture, paper, plain, RenderingIntent::AbsoluteColorimetric));
  ExpectNear(picture, Plain({188, 188, 188}, PixelOrder::Rgb, 3));
}

TEST(TransformPicture, LeavesThePictureWhereAProfileIsOfNoUse) {
  const test::TempDir dir;
  const auto good = test::EncodeProfile({.swapped = true});
  auto huge = good;
  huge.resize(kMaxColourProfile + 1);
  const std::pair<const char*, ProfileSource> cases[] = {
      {"nothing", Source("")},
      {"garbage", Source(std::string(5000, '\x5a'))},
      {"grey", Source(test::GreyProfile())},
      {"CMYK", Source(test::ProfileOfSpace("CMYK"))},
      {"Lab", Source(test::ProfileOfSpace("Lab "))},
      {"too long", Source(huge)},
      {"file too long", ProfileSource(dir.Write("huge.icc", huge))},
      {"header only", Source(good.substr(0, 128))},
      {"missing file", ProfileSource(dir / "missing.icc")},
      {"directory", ProfileSource(dir.Path())},
      {"text file", ProfileSource(dir.Write("a.icc", "no profile"))},
  };
  const auto original = Plain({200, 30, 90}, PixelOrder::Bgr, 4);
  for (const auto& [name, useless] : cases) {
    auto picture = original;
    EXPECT_FALSE(TransformPicture(picture, useless, Source(good), RenderingIntent::Perceptual)) << name;
    EXPECT_FALSE(TransformPicture(picture, Source(good), useless, RenderingIntent::Perceptual)) << name;
    EXPECT_EQ(picture.data, original.data) << name;
  }
  auto deep = MakePixelBuffer(2, 2, PixelOrder::Rgb, 2);
  EXPECT_FALSE(TransformPicture(deep, Source(good), Source(good), RenderingIntent::Perceptual)) << "16 bits";
}

TEST(TransformPicture, SeesThatAProfileFileWasReplaced) {
  const test::TempDir dir;
  const auto path = dir.Write("monitor.icc", test::EncodeProfile({}));
  const auto transformed = [&] {
    auto picture = Plain({200, 30, 90}, PixelOrder::Rgb, 3);
    TransformPicture(picture, Source(test::EncodeProfile({.swapped = true})), ProfileSource(path),
                     RenderingIntent::Perceptual);
    return std::to_integer<int>(picture.data[0]);
  };
  EXPECT_NEAR(transformed(), 90, 1);
  dir.Write("monitor.icc", test::EncodeProfile({.swapped = true, .name = "A name of another length"}));
  EXPECT_NEAR(transformed(), 200, 1);
}

/// More pairs in turn than are remembered: none may be taken for another.
TEST(TransformPicture, KeepsManyProfilesApart) {
  std::vector<std::string> profiles;
  for (int i = 0; i < 7; ++i)
    profiles.push_back(test::EncodeProfile({.swapped = i % 2 == 1, .mediaWhite = 1 - 0.1 * i}));
  const auto monitor = Source(test::EncodeProfile({}));
  for (int i = 0; i < 60; ++i) {
    const auto order = i % 3 == 0 ? PixelOrder::Bgr : PixelOrder::Rgb;
    auto picture = Plain({200, 30, 90}, order, 3);
    const auto which = static_cast<std::size_t>(i * i % 7);
    ASSERT_TRUE(TransformPicture(picture, Source(profiles[which]), monitor, RenderingIntent::Perceptual));
    ExpectNear(picture, Plain(which % 2 == 1 ? Pixel{90, 30, 200} : Pixel{200, 30, 90}, order, 3));
  }
}

TEST(ColourProfile, HasANameForPeople) {
  const auto name = [](const std::string& profile) {
    return ColourProfile::FromMemory(BytesOf(profile)).Description();
  };
  EXPECT_EQ(name(test::EncodeProfile({.name = "My Monitor 6500 K"})), "My Monitor 6500 K");
  EXPECT_EQ(name(test::EncodeProfile({.name = "two\nlines "})), "two lines");
  EXPECT_LE(name(test::EncodeProfile({.name = std::string(100'000, 'x')})).size(), 200U);
  EXPECT_EQ(name("garbage"), "");
}

TEST(ColourProfile, OfTheLibraryItselfIsWholeAgainFromItsBytes) {
  const auto built = ColourProfile::Srgb();
  EXPECT_TRUE(built.IsRgb());
  EXPECT_TRUE(ColourProfile::FromMemory(built.Bytes()).IsRgb());
}

TEST(ColourProfile, CutOrBentIsRefusedOrUsedButNeverFatal) {
  const auto whole = test::EncodeProfile({.swapped = true});
  const auto monitor = Source(test::EncodeProfile({}));
  const auto use = [&](const std::string& profile) {
    auto picture = Plain({200, 30, 90}, PixelOrder::Rgb, 3);
    const auto original = picture.data;
    const bool changed = TransformPicture(picture, Source(profile), monitor, RenderingIntent::Perceptual);
    if (!changed) {
      EXPECT_EQ(picture.data, original);
    }
    ColourProfile::FromMemory(BytesOf(profile)).Description();
  };
  for (const auto length : test::PrefixLengths(whole.size())) use(whole.substr(0, length));
  for (std::size_t at = 0; at < whole.size(); at += 3) {
    auto bent = whole;
    bent[at] = static_cast<char>(~bent[at]);
    use(bent);
  }
}

}  // namespace
}  // namespace ml::imaging
