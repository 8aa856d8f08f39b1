#include "imaging/jp2/jp2_decoder.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "imaging/decoding.h"
#include "imaging/jp2/code_stream.h"
#include "support/jp2_builder.h"

namespace ml::imaging {
namespace {

using test::BoxLength;
using test::EncodeJp2;
using test::Samples;
using namespace std::string_literals;

DecodedPicture DecodeFull(const metadata::ByteSource& source) { return DecodeJp2(source, {}); }

double MeanDifference(const std::string& a, const std::string& b) {
  EXPECT_EQ(a.size(), b.size());
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    sum += std::abs(static_cast<unsigned char>(a[i]) - static_cast<unsigned char>(b[i]));
  }
  return sum / static_cast<double>(a.size());
}

TEST(DecodeJp2, EverySampleOfEveryKind) {
  const auto picture = test::PaintLandscape(61, 37, 3);
  for (const auto length : {BoxLength::Short, BoxLength::Long, BoxLength::ToEnd}) {
    const auto decoded = test::Decode(DecodeFull, EncodeJp2(picture, {.rate = 1, .length = length}));
    test::ExpectSamples(decoded.pixels, picture.rgb);
    EXPECT_FALSE(decoded.damaged);
  }
  test::ExpectSamples(test::Decode(DecodeFull, EncodeJp2(picture, {.bits = 16, .rate = 1})).pixels, picture.rgb);
  const auto uuid = test::Jp2IptcBox("abc");
  const auto grey =
      test::Decode(DecodeFull, EncodeJp2(picture, {.grey = true, .rate = 1, .before = uuid, .after = uuid}));
  const auto green = static_cast<unsigned char>(picture.rgb[(61 * 20 + 30) * 3 + 1]);
  EXPECT_EQ(test::PixelAt(grey.pixels, 30, 20), (std::array<int, 3>{green, green, green}));
  EXPECT_FALSE(grey.damaged);
}

TEST(DecodeJp2, BareCodeStreams) {
  const auto picture = test::PaintLandscape(50, 40, 3);
  const auto stream = test::EncodeCodeStream(picture, {.rate = 1});
  test::ExpectSamples(test::Decode(DecodeFull, stream).pixels, picture.rgb);
  const auto inside = [](const auto& source) { return DecodeJp2(source, {}, {.codeStream = 7, .threads = 1}); };
  test::ExpectSamples(test::Decode(inside, "7 bytes" + stream).pixels, picture.rgb);
}

TEST(DecodeJp2, AsSmallAsStillCoversWhatIsWanted) {
  const auto bytes = EncodeJp2(test::PaintLandscape(401, 301, 3));
  const auto width = [&](int wantedWidth, int wantedHeight) {
    const auto decoded = test::Decode(
        [&](const auto& source) {
          return DecodeJp2(source, [&](int fullWidth, int fullHeight) {
            EXPECT_EQ(fullWidth, 401);
            EXPECT_EQ(fullHeight, 301);
            return PictureSize{wantedWidth, wantedHeight};
          });
        },
        bytes);
    EXPECT_EQ(decoded.fullWidth, 401);
    return decoded.pixels.width;
  };
  EXPECT_EQ(width(401, 301), 401);
  EXPECT_EQ(width(202, 1), 401);
  EXPECT_EQ(width(201, 151), 201);
  EXPECT_EQ(width(201, 152), 401);
  EXPECT_EQ(width(100, 75), 101);
  EXPECT_EQ(width(1, 1), 13) << "five halvings are all there are";
}

TEST(DecodeJp2, ShowsWhatIsThereOfATruncatedFile) {
  const auto picture = test::PaintLandscape(320, 240, 3);
  const auto bytes = EncodeJp2(picture, {.rate = 8});
  const auto whole = Samples(test::Decode(DecodeFull, bytes).pixels);
  const auto cut = test::Decode(DecodeFull, bytes.substr(0, bytes.size() * 9 / 10));
  EXPECT_TRUE(cut.damaged);
  EXPECT_LT(MeanDifference(Samples(cut.pixels), whole), 25);
  const auto small = EncodeJp2(test::PaintLandscape(96, 72, 3), {.rate = 8});
  EXPECT_GT(test::SweepPrefixes(DecodeFull, small, small.size(), 97), 500);
}

TEST(CodeStreamGap, IsFilledUpToTheLengthOfThePart) {
  const auto stream = "\xff\x4f\xff\x51\0\4ab\xff\x90\0\x0a\0\0\0\0\0\x14\0\1\xff\x93xyz"s;
  const metadata::MemorySource source(std::as_bytes(std::span(stream)));
  const auto gap = FindGap(source, {0, stream.size()});
  ASSERT_TRUE(gap);
  const MendedSource mended(source, *gap);
  const auto bytes = mended.Read(0, mended.Size());
  // Three bytes are missing of the twenty.
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), stream + "\0\0\0\xff\xd9"s);

  auto whole = stream + "abc\xff\xd9"s;
  const metadata::MemorySource complete(std::as_bytes(std::span(whole)));
  EXPECT_FALSE(FindGap(complete, {0, whole.size()}));
}

TEST(CodeStreamGap, NoMoreZerosThanTheCutPacketNeeds) {
  const auto stream = "\xff\x4f\xff\x51\0\4ab\xff\x90\0\x0a\0\0\xf0\0\0\0\0\1\xff\x93xyz"s;
  const metadata::MemorySource source(std::as_bytes(std::span(stream)));
  const auto gap = FindGap(source, {0, stream.size()});
  ASSERT_TRUE(gap);
  const MendedSource mended(source, *gap);
  EXPECT_EQ(mended.Size(), stream.size() + 64 * 1024 * 1024 + 2);
  EXPECT_EQ(mended.ReadNumber(14, 4, metadata::ByteOrder::Big), 64 * 1024 * 1024 + 17);
}

TEST(DecodeJp2, RefusesWithAReason) {
  EXPECT_EQ(test::Refusal(DecodeFull, ""), "Not a JPEG 2000 file");
  EXPECT_EQ(test::Refusal(DecodeFull, std::string(100, 'x')), "Not a JPEG 2000 file");
  auto stream = test::EncodeCodeStream(test::PaintLandscape(50, 40, 3), {});
  // Width and height of picture and tile, in the segment at 2.
  const auto claim = [&](const std::string& side, std::size_t padding = 0) {
    auto bytes = stream + std::string(padding, '\0');
    for (const std::size_t at : {8, 12, 24, 28}) bytes.replace(at, 4, side);
    return test::Refusal(DecodeFull, bytes);
  };
  EXPECT_EQ(claim("\0\0\x61\xa8"s), "The picture is too large") << "25,000 each way";
  EXPECT_EQ(claim("\0\0\x27\x10"s, 100'000), "The picture is too large") << "10,000 each way, decoded whole";
  EXPECT_EQ(claim("\0\0\x27\x10"s), "The file ends before its picture");
  auto pieces = stream;
  const auto coding = pieces.find("\xff\x52\0\x0c"s);
  ASSERT_NE(coding, std::string::npos);
  for (const std::size_t at : {8, 12, 24, 28}) pieces.replace(at, 4, "\0\0\x1f\x40"s);
  pieces.replace(coding + 10, 2, "\0\0"s);  // blocks of four pixels
  EXPECT_EQ(test::Refusal(DecodeFull, pieces), "The picture is cut into too many pieces");
}

}  // namespace
}  // namespace ml::imaging
