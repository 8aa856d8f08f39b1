#include "imagefiles/focus_points.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "imagefiles/format_table.h"
#include "metadata/canon/canon_model.h"
#include "metadata/exif_block.h"

namespace ml::imagefiles {
namespace {

struct ModelRow {
  std::string_view part;  ///< lower case, stands in the model behind its first character
  FocusCamera camera;
};
constexpr ModelRow kModels[] = {
    {"eos-1d", FocusCamera::FortyFivePoints},  // the 1Ds too
    {"eos 10d", FocusCamera::SevenPoints},    {"eos 300d", FocusCamera::SevenPoints},
    {"eos kiss", FocusCamera::SevenPoints},   {"eos digital rebel", FocusCamera::SevenPoints},
};

int DegreesOf(std::int32_t orientation) {
  return metadata::DegreesOfOrientation(static_cast<std::uint32_t>(orientation)).value_or(0);
}

/// By how much the picture of the file was turned.
int RotationOf(const metadata::ExifData& exif, bool useJpegExifOrientation) {
  const auto* row = FindFormat(exif.path);
  const bool jpeg = row != nullptr && row->format == Format::Jpeg;
  if (jpeg) return useJpegExifOrientation ? DegreesOf(exif.orientation) : 0;
  return exif.userRotation != 0 ? exif.userRotation : DegreesOf(exif.orientation);
}

// The marks are laid out as on the sensor, whose sizes are told in pixels of the EOS-1D's, and turned afterwards.

constexpr int kSensorWidth = 2464, kSensorHeight = 1648;

struct Sensor {
  int width, height;
  int centreX = width / 2, centreY = height / 2;
  int boxWidth = (width * 82 + 41) / kSensorWidth, boxHeight = (height * 116 + 58) / kSensorHeight;
};

/// A box around its centre.
struct Point {
  int x = 0, y = 0, width = 0, height = 0;
  bool active = false;
};

constexpr std::array<int, 7> kOuterRow{839, 975, 1110, 1232, 1354, 1489, 1625};
constexpr std::array<int, 10> kInnerRow{660, 789, 917, 1046, 1175, 1289, 1418, 1547, 1675, 1804};
constexpr std::array<int, 11> kMiddleRow{596, 724, 853, 982, 1110, 1232, 1354, 1482, 1611, 1740, 1868};

void AddRow(std::vector<Point>& points, const Sensor& sensor, std::span<const int> columns, int y, int bits) {
  for (const int column : columns) {
    points.push_back({column * sensor.width / kSensorWidth, y, sensor.boxWidth, sensor.boxHeight, (bits & 1) != 0});
    bits >>= 1;
  }
}

std::vector<Point> FortyFivePoints(const Sensor& sensor, const std::array<std::uint8_t, 8>& areas) {
  const int outer = sensor.height * 349 / kSensorHeight, inner = sensor.height * 172 / kSensorHeight;
  const auto bitsFrom = [&](std::size_t byte, int shift) { return (areas[byte] + 256 * areas[byte + 1]) >> shift; };
  std::vector<Point> points;
  AddRow(points, sensor, kOuterRow, sensor.centreY - outer, bitsFrom(1, 2));
  AddRow(points, sensor, kInnerRow, sensor.centreY - inner, bitsFrom(2, 3));
  AddRow(points, sensor, kMiddleRow, sensor.centreY, bitsFrom(3, 5));
  AddRow(points, sensor, kInnerRow, sensor.centreY + inner, bitsFrom(5, 0));
  AddRow(points, sensor, kOuterRow, sensor.centreY + outer, bitsFrom(6, 4));
  return points;
}

std::vector<Point> SevenPoints(const Sensor& sensor, std::uint32_t value) {
  const auto [width, height, x, y, boxWidth, boxHeight] = sensor;
  const auto is = [&](std::uint32_t bit) { return (value & bit) != 0; };
  return {{width / 6, y, boxWidth, boxHeight, is(0x40)},
          {x - width / 5, y, boxWidth, boxHeight, is(0x20)},
          {x, y, boxHeight, boxHeight, is(0x08)},
          {x + width / 5, y, boxWidth, boxHeight, is(0x02)},
          {5 * width / 6, y, boxWidth, boxHeight, is(0x01)},
          {x, height / 4, boxHeight, boxWidth, is(0x10)},
          {x, 3 * height / 4, boxHeight, boxWidth, is(0x04)}};
}

/// 0 if it is not known.
std::uint32_t FocusWordOf(const metadata::ExifData& exif, FocusCamera camera) {
  switch (camera) {
    case FocusCamera::SevenPoints:
      return static_cast<std::uint32_t>(exif.stitchShot);  // their word stands where other cameras count such shots
    case FocusCamera::ThreePoints:
      return static_cast<std::uint32_t>(exif.focusPointCode);
    case FocusCamera::FortyFivePoints:
      return 0;  // no file is known to tell them
  }
  return 0;
}

/// The high nibble of the camera's word says who chose the point; 0 is no word at all.
constexpr std::uint32_t ChosenBy(std::uint32_t value) { return (value & 0xf000) >> 12; }

std::vector<Point> ThreePoints(const Sensor& sensor, std::uint32_t value) {
  std::uint32_t active = 0;
  if (ChosenBy(value) == 1) active = 2;
  if (ChosenBy(value) == 3) active = value;
  const int columns[] = {sensor.width / 3, sensor.centreX, 2 * sensor.width / 3};
  std::vector<Point> points;
  std::uint32_t bit = 4;
  for (const int column : columns) {
    points.push_back({column, sensor.centreY, sensor.boxWidth, sensor.boxHeight, (active & bit) != 0});
    bit >>= 1;
  }
  return points;
}

Point Turned(const Point& point, const Sensor& sensor, int rotation) {
  const int mirroredX = sensor.width - point.x, mirroredY = sensor.height - point.y;
  switch (rotation) {
    case 90:
      return {mirroredY, point.x, point.height, point.width, point.active};
    case 180:
      return {mirroredX, mirroredY, point.width, point.height, point.active};
    case 270:
      return {point.y, mirroredX, point.height, point.width, point.active};
    default:
      return point;
  }
}

FocusBox BoxOf(const Point& point) {
  const int left = point.x - point.width / 2, top = point.y - point.height / 2;
  return {left, top, left + point.width - 1, top + point.height - 1, point.active};
}

using Colour = std::array<std::byte, 3>;  // red, green, blue
constexpr Colour MakeColour(int red, int green, int blue) {
  return {std::byte(red), std::byte(green), std::byte(blue)};
}
constexpr Colour kActiveOuter = MakeColour(255, 0, 0), kActiveInner = MakeColour(180, 0, 0);
constexpr Colour kInactiveOuter = MakeColour(0, 0, 0), kInactiveInner = MakeColour(80, 80, 80);

void SetPixel(imaging::PixelBuffer& picture, int x, int y, const Colour& colour) {
  if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) return;
  auto* pixel = picture.Row(y) + static_cast<std::ptrdiff_t>(x) * 3;
  const bool bgr = picture.order == imaging::PixelOrder::Bgr;
  pixel[0] = bgr ? colour[2] : colour[0];
  pixel[1] = colour[1];
  pixel[2] = bgr ? colour[0] : colour[2];
}

void DrawRectangle(imaging::PixelBuffer& picture, const FocusBox& box, const Colour& colour) {
  for (int x = box.left; x <= box.right; ++x) {
    SetPixel(picture, x, box.top, colour);
    SetPixel(picture, x, box.bottom, colour);
  }
  for (int y = box.top; y <= box.bottom; ++y) {
    SetPixel(picture, box.left, y, colour);
    SetPixel(picture, box.right, y, colour);
  }
}

/// An eighth of the circle is walked, the other seven are its mirror images.
void DrawCircle(imaging::PixelBuffer& picture, const FocusCircle& circle, const Colour& colour) {
  int x = circle.radius, y = 0, error = 1 - circle.radius;
  while (x >= y) {
    const int offsets[][2] = {{x, y}, {y, x}, {-x, y}, {-y, x}, {x, -y}, {y, -x}, {-x, -y}, {-y, -x}};
    for (const auto& offset : offsets) SetPixel(picture, circle.x + offset[0], circle.y + offset[1], colour);
    ++y;
    if (error >= 0) --x, error -= 2 * x;
    error += 2 * y + 1;
  }
}

}  // namespace

std::optional<FocusCamera> FocusCameraOf(std::string_view model) {
  if (model == "Canon EOS D30" || model == "Canon EOS D60") return FocusCamera::ThreePoints;
  const auto* row = std::ranges::find_if(
      kModels, [name = std::string(model)](const auto& r) { return metadata::ModelHolds(name, r.part); });
  if (row == std::end(kModels) || model.find("Canon EOS") == std::string_view::npos) return std::nullopt;
  return row->camera;
}

std::optional<FocusPointData> FocusPointsOf(const metadata::ExifData& exif, bool useJpegExifOrientation) {
  const auto camera = FocusCameraOf(exif.model);
  const auto value = camera ? FocusWordOf(exif, *camera) : 0;
  if (value == 0) return std::nullopt;
  return FocusPointData{.camera = *camera,
                        .value = value,
                        .circle = metadata::ModelHolds(exif.model, "eos 10d"),
                        .rotation = RotationOf(exif, useJpegExifOrientation)};
}

FocusOverlay LayOutFocusPoints(const FocusPointData& data, int width, int height) {
  if (data.camera == FocusCamera::ThreePoints && ChosenBy(data.value) == 0) return {};
  const int rotation = data.rotation == 0 && width < height ? 270 : data.rotation;
  const bool onItsSide = rotation == 90 || rotation == 270;
  const Sensor sensor{onItsSide ? height : width, onItsSide ? width : height};
  FocusOverlay overlay;
  std::vector<Point> points;
  switch (data.camera) {
    case FocusCamera::FortyFivePoints:
      points = FortyFivePoints(sensor, data.areas);
      break;
    case FocusCamera::SevenPoints:
      points = SevenPoints(sensor, data.value);
      if (data.circle) overlay.circle = {width / 2, height / 2, sensor.width * 11 / 100};
      break;
    case FocusCamera::ThreePoints:
      points = ThreePoints(sensor, data.value);
      overlay.circle = {width / 2, height / 2, sensor.width * 10 / 75};
      break;
  }
  for (const auto& point : points) overlay.boxes.push_back(BoxOf(Turned(point, sensor, rotation)));
  return overlay;
}

void PaintFocusPoints(imaging::PixelBuffer& picture, const FocusOverlay& overlay) {
  if (overlay.circle) DrawCircle(picture, *overlay.circle, kInactiveOuter);
  for (const auto& box : overlay.boxes) {
    DrawRectangle(picture, box, box.active ? kActiveOuter : kInactiveOuter);
    const FocusBox inner{box.left + 1, box.top + 1, box.right - 1, box.bottom - 1, box.active};
    DrawRectangle(picture, inner, box.active ? kActiveInner : kInactiveInner);
  }
}

}  // namespace ml::imagefiles
