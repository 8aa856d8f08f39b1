#include "imagefiles/display_picture.h"

#include <gtest/gtest.h>

#include "imagefiles/display_limits.h"
#include "platform/errors.h"
#include "support/camera_raw.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using imaging::PixelBuffer;

/// Pixels as red, green, blue.
PixelBuffer RowOf(std::initializer_list<std::array<int, 3>> pixels) {
  auto buffer = imaging::MakePixelBuffer(static_cast<int>(pixels.size()), 1, imaging::PixelOrder::Bgr);
  auto* out = buffer.data.data();
  for (const auto& pixel : pixels) {
    for (const std::size_t channel : {2U, 1U, 0U}) *out++ = static_cast<std::byte>(pixel[channel]);
  }
  return buffer;
}

/// 'X' for each black pixel of the first row.
std::string BlackPixels(const PixelBuffer& picture) {
  std::string result;
  for (int x = 0; x < picture.width; ++x) {
    const auto* pixel = picture.Row(0) + static_cast<std::ptrdiff_t>(x) * 3;
    const bool black = std::all_of(pixel, pixel + 3, [](std::byte value) { return value == std::byte{0}; });
    result += black ? 'X' : '.';
  }
  return result;
}

TEST(Highlights, ByBothMeasures) {
  using enum HighlightMethod;
  struct Case {
    const char* what;
    PixelBuffer row;
    HighlightOptions options;
    const char* black;
  };
  const Case cases[] = {
      {"one channel is enough", RowOf({{250, 0, 1}, {1, 250, 0}, {0, 1, 255}}), {RgbValue, 250}, "XXX"},
      {"all just below", RowOf({{249, 249, 249}}), {RgbValue, 250}, "."},
      {"red alone", RowOf({{255, 1, 1}, {255, 1, 1}}), {Luminosity, 10}, ".."},
      {"own blue counts for nothing", RowOf({{0, 1, 255}, {0, 1, 0}}), {Luminosity, 20}, ".."},
      {"the neighbour's blue counts 0.114", RowOf({{0, 1, 0}, {0, 1, 255}}), {Luminosity, 29}, "X."},
      {"and no more than that", RowOf({{0, 1, 0}, {0, 1, 255}}), {Luminosity, 30}, ".."},
      {"a black neighbour's blue is read before it is blackened",
       RowOf({{9, 200, 9}, {9, 255, 255}, {9, 9, 255}}),
       {Luminosity, 206},
       "XX."},
      {"green counts 0.886", RowOf({{0, 255, 0}, {0, 0, 9}}), {Luminosity, 226}, "X."},
      {"nothing behind the end of a row", RowOf({{0, 255, 255}}), {Luminosity, 227}, "."},
  };
  for (const auto& c : cases) EXPECT_EQ(BlackPixels(BlackOutHighlights(c.row, c.options)), c.black) << c.what;
}

TEST(Highlights, PaddingIsNoNeighbour) {
  auto row = RowOf({{0, 1, 0}, {0, 1, 0}, {0, 1, 255}, {255, 255, 255}});
  row.width = 3;
  EXPECT_EQ(BlackPixels(BlackOutHighlights(row, {HighlightMethod::Luminosity, 29})), ".X.");
}

TEST(DisplayLimits, SnapToTheSizesOfPreviews) {
  using enum OptimiseSize;
  struct Case {
    PictureRoom room;
    OptimiseSize optimise;
    DisplayLimits limits;
  };
  const Case cases[] = {
      {{1000, 800, 291}, LargestImage, {994, 795, 1285, 798}},
      {{3, 2, 0}, LargestImage, {1, 1, 1, 1}},
      {{1446, 965, 0}, D30Raw, {1440, 960, 480, 720}},
      {{1445, 965, 0}, D30Raw, {720, 480, 480, 720}},
      {{1445, 965, 1}, D30Raw, {1440, 960, 480, 720}},  // with the column there is room
      {{725, 486, 0}, D30Raw, {719, 481, 719, 484}},
      {{700, 1442, 266}, D30Raw, {720, 480, 960, 1440}},
      {{645, 485, 0}, G1Raw, {639, 480, 639, 483}},
      {{646, 485, 0}, G1Raw, {640, 480, 640, 483}},
      {{646, 642, 0}, G1Raw, {640, 480, 480, 640}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ApplyDisplayLimits(c.room, c.optimise), c.limits) << c.room.width << " x " << c.room.height;
  }
}

DisplayOptions Box(int side) {
  DisplayOptions options;
  options.limits = {.maxWidth = side, .maxHeight = side};
  return options;
}

TEST(DisplayPicture, HasWhatTheOptionsAskFor) {
  const test::TempDir dir;
  const auto path = dir.Write("white.jpg", test::EncodeJpeg(test::PaintPlain(90, 60, 0xffffff)));
  const auto plain = MakeDisplayPicture(path, Box(30));
  EXPECT_EQ(plain.failure, "");
  EXPECT_EQ(plain.main.width, 30);
  EXPECT_EQ(plain.main.height, 20);
  EXPECT_EQ(plain.histogram.pixelCount, 600U);
  EXPECT_TRUE(plain.blink.Empty());
  auto options = Box(30);
  options.highlights = HighlightOptions{HighlightMethod::RgbValue, 250};
  const auto blinking = MakeDisplayPicture(path, options);
  EXPECT_EQ(blinking.main.data, plain.main.data);
  EXPECT_EQ(BlackPixels(blinking.blink), std::string(30, 'X'));
  EXPECT_GT(blinking.Bytes(), plain.Bytes());
}

TEST(DisplayPicture, TellsWhyThereIsNone) {
  const test::TempDir dir;
  const auto gone = dir / "gone.jpg", text = dir.Write("a.txt", "no image"), broken = dir.Write("b.jpg", "no JPEG");
  EXPECT_EQ(MakeDisplayPicture(gone, Box(30)).failure, "No such image: " + gone);
  EXPECT_EQ(MakeDisplayPicture(text, Box(30)).failure, "No such image: " + text);
  const auto picture = MakeDisplayPicture(broken, Box(30));
  EXPECT_EQ(picture.failure.rfind("Unable to read image:\n" + broken, 0), 0U) << picture.failure;
  EXPECT_TRUE(picture.main.Empty());
  EXPECT_EQ(picture.histogram.pixelCount, 0U);
}

/// Develops a picture all of one colour, or refuses.
class PlainDevelopment final : public DevelopLibrary {
 public:
  bool refuses = false;
  PixelBuffer Develop(const std::string& path) override {
    if (refuses) throw platform::UserError(path);
    auto pixels = imaging::MakePixelBuffer(60, 40, imaging::PixelOrder::Rgb);
    for (std::size_t i = 0; i < pixels.data.size(); i += 3) pixels.data[i] = std::byte{200};
    return pixels;
  }
};

TEST(DisplayPicture, DevelopsEos1DFilesWhereThatIsWanted) {
  const test::TempDir dir;
  test::CameraRaw camera;
  camera.orientation = 6;
  const auto raw = dir.Write("a.tif", test::Eos1DDirectories(camera).Build());
  const auto viewing = dir.Write("a.jpg", test::EncodeJpeg(test::PaintPlain(300, 200, 0xff)));
  PlainDevelopment library;
  auto options = Box(30);
  EXPECT_EQ(MakeDisplayPicture(raw, options, &library).main.height, 20);
  options.developEos1D = true;
  const auto developed = MakeDisplayPicture(raw, options, &library);
  EXPECT_EQ(developed.main.height, 30) << "turned as the camera was held";
  EXPECT_EQ(developed.main.data[2], std::byte{200});
  EXPECT_EQ(developed.histogram.pixelCount, 600U);
  EXPECT_EQ(MakeDisplayPicture(viewing, options, &library).main.height, 20) << "no raw file";
  library.refuses = true;
  EXPECT_EQ(MakeDisplayPicture(raw, options, &library).main.height, 20) << "the viewing JPEG instead";
}

}  // namespace
}  // namespace ml::imagefiles
