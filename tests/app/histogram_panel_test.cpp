#include "imagefiles/ui/histogram_panel.h"

#include <gtest/gtest.h>

#include <QImage>
#include <cstdlib>

namespace ml::imagefiles::ui {
namespace {

constexpr QRgb kBlack = qRgb(0, 0, 0), kGround = qRgb(212, 208, 200), kBars = qRgb(90, 90, 90);
constexpr QRgb kRed = qRgb(255, 0, 0), kGreen = qRgb(0, 200, 0), kBlue = qRgb(0, 0, 255), kOutside = qRgb(1, 2, 3);

/// Plateaus of all four, each over levels of its own, and one bar at level 50.
Histogram Plateaus() {
  Histogram counts;
  counts.pixelCount = 50'000;  // the limit is 1000
  for (std::size_t i = 0; i < 10; ++i) {
    counts.red[100 + i] = 1000;
    counts.green[150 + i] = 5000;
    counts.blue[200 + i] = 250;
  }
  counts.combined[50] = 4 * 400;
  counts.combined[51] = 4 * 200;
  return counts;
}

QImage Painted(HistogramPanel& panel, QSize size) {
  panel.resize(size);
  QImage image(size, QImage::Format_RGB32);
  image.fill(kOutside);
  panel.render(&image, {}, {}, QWidget::RenderFlags{});
  return image;
}

/// Curves are smoothed, so that a pixel of theirs may hold some of the ground.
bool Alike(QRgb a, QRgb b) {
  constexpr int kSmoothing = 70;
  return std::abs(qRed(a) - qRed(b)) < kSmoothing && std::abs(qGreen(a) - qGreen(b)) < kSmoothing &&
         std::abs(qBlue(a) - qBlue(b)) < kSmoothing;
}

bool Holds(const QImage& image, QRgb colour) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (Alike(image.pixel(x, y), colour)) return true;
    }
  }
  return false;
}

struct Spot {
  int x, y;
  QRgb colour;
  const char* what;
};

void ExpectSpots(const QImage& image, std::initializer_list<Spot> spots) {
  for (const auto& spot : spots) {
    EXPECT_TRUE(Alike(image.pixel(spot.x, spot.y), spot.colour))
        << spot.what << ": " << QColor(image.pixel(spot.x, spot.y)).name().toStdString();
  }
}

TEST(HistogramPanel, FrameAxesAndTicks) {
  HistogramPanel panel;
  ExpectSpots(Painted(panel, {300, 130}), {{0, 0, kBlack, "corner of the frame"},
                                           {274, 113, kBlack, "opposite corner"},
                                           {275, 50, kOutside, "right of the frame"},
                                           {50, 114, kOutside, "below the frame"},
                                           {1, 1, kGround, "ground"},
                                           {10, 105, kBlack, "where the axes meet"},
                                           {200, 105, kBlack, "level axis"},
                                           {265, 105, kBlack, "its end"},
                                           {268, 105, kGround, "behind its end"},
                                           {10, 6, kBlack, "count axis"},
                                           {20, 109, kBlack, "long tick below"},
                                           {20, 111, kGround, "under it"},
                                           {25, 106, kBlack, "short tick below"},
                                           {25, 108, kGround, "under it"},
                                           {6, 95, kBlack, "long tick at the left"},
                                           {9, 100, kBlack, "short tick at the left"},
                                           {6, 100, kGround, "beside it"}});
}

TEST(HistogramPanel, CurvesAndBars) {
  HistogramPanel panel;
  panel.SetHistogram(Plateaus(), {});
  ExpectSpots(Painted(panel, {275, 114}), {{114, 4, kRed, "red"},
                                           {164, 4, kGreen, "green, cut to the height of red"},
                                           {214, 79, kBlue, "blue, a quarter as high"},
                                           {60, 6, kBars, "tallest bar"},
                                           {60, 3, kGround, "above it"},
                                           {61, 56, kBars, "half as tall"},
                                           {61, 53, kGround, "above it"},
                                           {62, 100, kGround, "no bar"}});
}

TEST(HistogramPanel, LeavesOutWhatIsOff) {
  HistogramPanel panel;
  panel.SetHistogram(Plateaus(), {.green = false, .intensity = false});
  const auto image = Painted(panel, {275, 114});
  EXPECT_TRUE(Holds(image, kRed) && Holds(image, kBlue));
  EXPECT_FALSE(Holds(image, kGreen));
  EXPECT_TRUE(Alike(image.pixel(60, 50), kGround)) << "no bar";
  EXPECT_EQ(panel.accessibleDescription(), QStringLiteral("Levels from black to white: red, blue"));
  panel.SetHistogram({}, {});
  EXPECT_FALSE(Holds(Painted(panel, {275, 114}), kRed)) << "the last picture's curve is gone";
}

TEST(HistogramPanel, ShrinksAsAWhole) {
  HistogramPanel panel;
  panel.SetHistogram(Plateaus(), {.red = false, .green = false});
  EXPECT_EQ(panel.heightForWidth(500), 114);
  const int height = panel.heightForWidth(137);
  EXPECT_EQ(height, 57);
  const auto image = Painted(panel, {137, height});
  EXPECT_TRUE(Alike(image.pixel(136, 20), kBlack)) << "the right side of the frame";
  EXPECT_TRUE(Holds(image.copy(100, 0, 10, height), kBlue)) << "levels around 200";
}

}  // namespace
}  // namespace ml::imagefiles::ui
