#include "imagefiles/focus_points.h"

#include <gtest/gtest.h>

#include <string>

namespace ml::imagefiles {

void PrintTo(const FocusBox& box, std::ostream* out) {
  *out << box.left << "," << box.top << " to " << box.right << "," << box.bottom << (box.active ? " active" : "");
}

namespace {

using enum FocusCamera;

TEST(FocusPoints, CamerasByModel) {
  struct Case {
    const char* model;
    std::optional<FocusCamera> camera;
  };
  const Case cases[] = {
      {"Canon EOS-1D", FortyFivePoints},
      {"Canon EOS-1DS", FortyFivePoints},
      {"Canon EOS 10D", SevenPoints},
      {"Canon EOS 300D DIGITAL", SevenPoints},
      {"Canon EOS Kiss Digital", SevenPoints},
      {"Canon EOS DIGITAL REBEL", SevenPoints},
      {"Canon EOS D30", ThreePoints},
      {"Canon EOS D60", ThreePoints},
      {"Canon EOS D60 ", std::nullopt},
      {"CANON EOS D30", std::nullopt},
      {"EOS 10D", std::nullopt},
      {"My EOS 10D", std::nullopt},
      {"Canon EOS 20D", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(FocusCameraOf(c.model), c.camera) << c.model;
}

/// "110": which points are active.
std::string Active(const FocusOverlay& overlay) {
  std::string result;
  for (const auto& box : overlay.boxes) result += box.active ? '1' : '0';
  return result;
}

TEST(FocusPoints, FortyFivePointsInFiveRows) {
  FocusPointData data{.camera = FortyFivePoints};
  // The lowest bits of the rows: bit 2 of b1, 3 of b2, 5 of b3, 0 of b5, 4 of b6; and the last of each row.
  data.areas = {0xff, 0x04, 0x08 + 0x01, 0x20 + 0x10, 0x80, 0x01, 0x10 + 0x02, 0x04};
  const auto overlay = LayOutFocusPoints(data, 1232, 824);
  EXPECT_EQ(Active(overlay),
            "1000001"
            "1000000001"
            "10000000001"
            "1000000001"
            "1000001");
  EXPECT_FALSE(overlay.circle);
  EXPECT_EQ(overlay.boxes[0], (FocusBox{399, 209, 439, 266, true}));   // around 419, 412 - 174
  EXPECT_EQ(overlay.boxes[7], (FocusBox{310, 297, 350, 354, true}));   // around 330, 412 - 86
  EXPECT_EQ(overlay.boxes[27], (FocusBox{914, 383, 954, 440, true}));  // around 934, 412
  EXPECT_EQ(overlay.boxes[28], (FocusBox{310, 469, 350, 526, true}));  // around 330, 412 + 86
  EXPECT_EQ(overlay.boxes[44], (FocusBox{792, 557, 832, 614, true}));  // around 812, 412 + 174
}

TEST(FocusPoints, SevenPointsWithAndWithoutCircle) {
  struct Case {
    std::uint32_t value;
    const char* active;
  };
  for (const auto& c : {Case{0x40, "1000000"}, Case{0x20, "0100000"}, Case{0x08, "0010000"}, Case{0x02, "0001000"},
                        Case{0x01, "0000100"}, Case{0x10, "0000010"}, Case{0x04, "0000001"}, Case{0x80, "0000000"}}) {
    const auto overlay = LayOutFocusPoints({.camera = SevenPoints, .value = c.value, .circle = true}, 1200, 800);
    EXPECT_EQ(Active(overlay), c.active);
    EXPECT_EQ(overlay.circle, (FocusCircle{600, 400, 132}));
  }
  const auto overlay = LayOutFocusPoints({.camera = SevenPoints}, 1200, 800);
  EXPECT_FALSE(overlay.circle);
  const std::vector<FocusBox> expected{{181, 372, 219, 427}, {341, 372, 379, 427},  {572, 372, 627, 427},
                                       {821, 372, 859, 427}, {981, 372, 1019, 427}, {572, 181, 627, 219},
                                       {572, 581, 627, 619}};
  EXPECT_EQ(overlay.boxes, expected);
}

TEST(FocusPoints, ThreePointsByTheWayTheyWereChosen) {
  struct Case {
    std::uint32_t value;
    const char* active;
  };
  for (const auto& c : {Case{0x1007, "010"}, Case{0x3004, "100"}, Case{0x3003, "011"}, Case{0x2007, "000"},
                        Case{0x0007, ""}, Case{0x13007, "111"}}) {
    EXPECT_EQ(Active(LayOutFocusPoints({.camera = ThreePoints, .value = c.value}, 1200, 800)), c.active) << c.value;
  }
  const auto overlay = LayOutFocusPoints({.camera = ThreePoints, .value = 0x3002}, 1200, 800);
  EXPECT_EQ(overlay.circle, (FocusCircle{600, 400, 160}));
  const std::vector<FocusBox> expected{{381, 372, 419, 427}, {581, 372, 619, 427, true}, {781, 372, 819, 427}};
  EXPECT_EQ(overlay.boxes, expected);
}

TEST(FocusPoints, TurnWithThePicture) {
  struct Case {
    int rotation, width, height;
    FocusBox left, upper;  ///< of the picture before it was turned
  };
  const Case cases[] = {
      {0, 1200, 800, {181, 372, 219, 427}, {572, 181, 627, 219}},
      {180, 1200, 800, {981, 372, 1019, 427}, {572, 581, 627, 619}},
      {90, 800, 1200, {372, 181, 427, 219}, {581, 572, 619, 627}},
      {270, 800, 1200, {372, 981, 427, 1019}, {181, 572, 219, 627}},
      {0, 800, 1200, {372, 981, 427, 1019}, {181, 572, 219, 627}},  // counts as 270
  };
  for (const auto& c : cases) {
    const auto overlay = LayOutFocusPoints({.camera = SevenPoints, .rotation = c.rotation}, c.width, c.height);
    EXPECT_EQ(overlay.boxes[0], c.left) << c.rotation;
    EXPECT_EQ(overlay.boxes[5], c.upper) << c.rotation;
  }
}

TEST(FocusPoints, ComeFromTheShootingData) {
  metadata::ExifData exif;
  exif.path = "a.jpg";
  exif.model = "Canon EOS 10D";
  EXPECT_FALSE(FocusPointsOf(exif, true)) << "the word is not known";
  exif.stitchShot = 8;
  exif.orientation = 6;
  const auto turned = FocusPointsOf(exif, true), asStored = FocusPointsOf(exif, false);
  ASSERT_TRUE(turned && asStored);
  EXPECT_EQ(turned->value, 8U);
  EXPECT_TRUE(turned->circle);
  EXPECT_EQ(turned->rotation, 90);
  EXPECT_EQ(asStored->rotation, 0);
  exif.path = "a.crw";
  exif.userRotation = 180;
  EXPECT_EQ(FocusPointsOf(exif, false)->rotation, 180);
  exif.model = "Canon EOS 300D DIGITAL";
  EXPECT_FALSE(FocusPointsOf(exif, false)->circle);
  exif.focusPointCode = 0x3002;
  exif.model = "Canon EOS D60";
  EXPECT_EQ(FocusPointsOf(exif, false)->value, 0x3002U);
  for (const auto* model : {"NIKON D100", "Canon EOS-1D"}) {
    exif.model = model;
    EXPECT_FALSE(FocusPointsOf(exif, false)) << model;
  }
}

/// One letter a pixel: R and r the reds, B and b the black and the grey.
std::string Letters(const imaging::PixelBuffer& picture, int y) {
  std::string row;
  for (int x = 0; x < picture.width; ++x) {
    const auto* pixel = picture.Row(y) + static_cast<std::ptrdiff_t>(x) * 3;
    const int blue = std::to_integer<int>(pixel[0]), red = std::to_integer<int>(pixel[2]);
    row += red == 255 && blue == 0 ? 'R' : red == 180 ? 'r' : red == 80 ? 'b' : red == 0 ? 'B' : '.';
  }
  return row;
}

TEST(FocusPoints, ArePaintedWithLinesOfOnePixel) {
  auto picture = imaging::MakePixelBuffer(12, 7, imaging::PixelOrder::Bgr);
  std::ranges::fill(picture.data, std::byte{0xfe});
  PaintFocusPoints(picture, {.circle = {}, .boxes = {{1, 1, 5, 5, true}, {7, 1, 14, 8, false}}});
  const std::string expected[] = {"............", ".RRRRR.BBBBB", ".RrrrR.Bbbbb", ".Rr.rR.Bb...",
                                  ".RrrrR.Bb...", ".RRRRR.Bb...", ".......Bb..."};
  for (int y = 0; y < 7; ++y) EXPECT_EQ(Letters(picture, y), expected[y]) << y;

  std::ranges::fill(picture.data, std::byte{0xfe});
  PaintFocusPoints(picture, {.circle = FocusCircle{3, 3, 3}, .boxes = {}});
  const std::string circle[] = {"..BBB.......", ".B...B......", "B.....B.....", "B.....B.....",
                                "B.....B.....", ".B...B......", "..BBB......."};
  for (int y = 0; y < 7; ++y) EXPECT_EQ(Letters(picture, y), circle[y]) << y;
}

}  // namespace
}  // namespace ml::imagefiles
