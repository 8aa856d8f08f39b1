#include "imaging/raw/raw_preview.h"

#include <gtest/gtest.h>

#include "imaging/decoding.h"
#include "support/camera_raw.h"

namespace ml::imaging {
namespace {

TEST(DecodeRawPreview, HalfTheSensorsSizeAndNotTurned) {
  const test::CameraRaw raw{.orientation = 6};
  const std::pair<const char*, std::string> files[] = {
      {"NEF", NefDirectories(raw).Build()},
      {"PEF", PefDirectories(raw).Build()},
      {"MRW", MrwFile(raw, MrwDirectories(raw))},
  };
  for (const auto& [name, bytes] : files) {
    SCOPED_TRACE(name);
    ASSERT_EQ(test::Refusal(DecodeRawPreview, bytes), "decoded");
    const auto decoded = test::Decode(DecodeRawPreview, bytes);
    EXPECT_FALSE(decoded.damaged);
    EXPECT_NEAR(decoded.fullWidth, raw.width, 48);
    EXPECT_NEAR(decoded.fullHeight, raw.height, 48);
    EXPECT_EQ(decoded.pixels.width, (decoded.fullWidth + 1) / 2);
    EXPECT_EQ(decoded.pixels.height, (decoded.fullHeight + 1) / 2);
    // Sky over land.
    const auto sky = test::PixelAt(decoded.pixels, decoded.pixels.width / 2, decoded.pixels.height / 8);
    const auto land = test::PixelAt(decoded.pixels, decoded.pixels.width / 2, decoded.pixels.height * 7 / 8);
    EXPECT_GT(sky[2], sky[0]);
    EXPECT_GT(land[1], land[2]);
  }
}

TEST(DecodeRawPreview, RefusesWithAReasonAndInSilence) {
  const test::CameraRaw raw;
  const auto bytes = NefDirectories(raw).Build();
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(test::Refusal(DecodeRawPreview, ""), "The file is empty");
  EXPECT_EQ(test::Refusal(DecodeRawPreview, std::string(4096, 'x')), "Unsupported file format or not RAW file");
  EXPECT_EQ(test::Refusal(DecodeRawPreview, bytes.substr(0, 4096)), "The file ends before its picture");
  for (std::size_t size = 1; size < bytes.size(); size += bytes.size() / 37) {
    const auto cut = bytes.substr(0, size);
    // The sensor data comes first.
    if (test::Refusal(DecodeRawPreview, cut) == "decoded" && size < bytes.size() * 3 / 4) {
      EXPECT_TRUE(test::Decode(DecodeRawPreview, cut).damaged) << size;
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
}  // namespace ml::imaging
