#include "imaging/jpeg/jpeg_transform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "imaging/jpeg/jpeg_coefficients.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/scale.h"
#include "metadata/jpeg_layout.h"
#include "metadata/jpeg_size.h"
#include "platform/errors.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"

namespace ml::imaging {
namespace {

using Bytes = std::vector<std::byte>;

Bytes ToBytes(const std::string& text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}
DecodedPicture Decode(const Bytes& jpeg) {
  const metadata::MemorySource source(jpeg);
  return DecodeJpeg(
      source, 0, [](int, int) { return 8; }, PixelOrder::Rgb);
}

struct Case {
  const char* name;
  test::JpegEncoding encoding;
};
const Case kCases[] = {
    {"half chroma", {}},
    {"full chroma", {.fullChroma = true}},
    {"grey", {.colours = test::JpegColours::Grey}},
    {"CMYK", {.colours = test::JpegColours::CmykAdobe}},
    {"progressive", {.progressive = true}},
    {"unusual chroma", {.unusualChroma = true}},
};

TEST(TransformJpeg, FourQuartersGiveBackTheSameCoefficients) {
  for (const auto& [name, encoding] : kCases) {
    const auto jpeg = ToBytes(EncodeJpeg(test::PaintLandscape(96, 64, 3), encoding));
    const auto same = TransformJpeg(jpeg, JpegTransform::None);
    auto turned = jpeg;
    for (int i = 0; i < 4; ++i) {
      turned = TransformJpeg(turned, JpegTransform::cw90);
      EXPECT_EQ(turned == same, i == 3) << name << " after turn " << i + 1;
    }
    const auto there = TransformJpeg(jpeg, JpegTransform::cw270);
    EXPECT_EQ(TransformJpeg(there, JpegTransform::cw90), same) << name;
    const auto over = TransformJpeg(jpeg, JpegTransform::Transverse);
    EXPECT_EQ(TransformJpeg(TransformJpeg(over, JpegTransform::half), JpegTransform::Transpose), same) << name;
    EXPECT_EQ(metadata::ReadJpegSize(metadata::MemorySource(turned))->progressive, encoding.progressive) << name;
  }
}

TEST(TransformJpeg, ShowsTheTurnedPictureWhole) {
  for (const auto& [name, encoding] : kCases) {
    const auto jpeg = ToBytes(EncodeJpeg(test::PaintLandscape(96, 64, 3), encoding));
    for (const auto turn : {Turn::cw90, Turn::half, Turn::cw270}) {
      const auto wanted = Turned(Decode(jpeg).pixels, turn);
      const auto got = Decode(TransformJpeg(jpeg, TransformOf(turn)));
      ASSERT_EQ(got.pixels.width, wanted.width) << name;
      EXPECT_FALSE(got.damaged) << name;
      long long difference = 0;
      for (std::size_t i = 0; i < wanted.data.size(); ++i) {
        difference += std::abs(std::to_integer<int>(got.pixels.data[i]) - std::to_integer<int>(wanted.data[i]));
      }
      EXPECT_LT(difference, static_cast<long long>(wanted.data.size()) / 2) << name << ": rounding of the decoder only";
    }
  }
  const auto cut = TransformJpeg(ToBytes(EncodeJpeg(test::PaintLandscape(99, 70, 3))), JpegTransform::cw90);
  const auto size = metadata::ReadJpegSize(metadata::MemorySource(cut));
  EXPECT_TRUE(size->width == 70 && size->height == 99) << "blocks at the edge are kept";
}

/// What is behind the segments that only one of the two ways writes.
Bytes Picture(const Bytes& jpeg) {
  const auto layout = metadata::ReadJpegLayout(jpeg);
  const auto begin = layout.applications.empty() ? 2 : layout.applications.back().End();
  return {jpeg.begin() + static_cast<std::ptrdiff_t>(begin), jpeg.end()};
}

TEST(TransformJpeg, BothWaysMoveTheSameBlocks) {
  for (const auto& [name, encoding] : kCases) {
    if (encoding.unusualChroma) continue;  // which only one of the two can do
    for (const auto& [width, height] : {std::pair(96, 64), std::pair(99, 70), std::pair(7, 40)}) {
      const auto jpeg = ToBytes(EncodeJpeg(test::PaintLandscape(width, height, 3), encoding));
      for (int i = 0; i <= 7; ++i) {
        const auto transform = static_cast<JpegTransform>(i);
        EXPECT_EQ(Picture(TransformCoefficients(jpeg, transform)), Picture(TransformJpeg(jpeg, transform)))
            << name << ", " << width << " wide, " << i;
      }
    }
  }
}

TEST(TransformJpeg, StrayBytesInFrontOfAMarkerAreLeftOut) {
  const auto photo = EncodeJpeg(test::PaintLandscape(96, 64, 3));
  auto stray = photo;
  stray.insert(stray.size() - 2, "ab");
  EXPECT_EQ(TransformJpeg(ToBytes(stray), JpegTransform::cw90), TransformJpeg(ToBytes(photo), JpegTransform::cw90));
}

TEST(TransformJpeg, RefusesWhatItCannotMoveWhole) {
  const auto photo = EncodeJpeg(test::PaintLandscape(96, 64, 3));
  const std::string cases[] = {"", "no JPEG at all", photo.substr(0, photo.size() / 2),
                               test::WithClaimedSize(photo, 40000, 40000)};
  for (const auto& bytes : cases) {
    EXPECT_THROW(TransformJpeg(ToBytes(bytes), JpegTransform::cw90), platform::LibraryError) << bytes.size();
  }
}

}  // namespace
}  // namespace ml::imaging
