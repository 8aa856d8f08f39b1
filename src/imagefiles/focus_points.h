#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "imaging/pixel_buffer.h"
#include "metadata/exif_data.h"

/// Where the camera measured the focus, as marks over the picture.
namespace ml::imagefiles {

/// The groups of cameras whose focus points are known.
enum class FocusCamera { FortyFivePoints, SevenPoints, ThreePoints };
/// Nothing for a model without an overlay.
std::optional<FocusCamera> FocusCameraOf(std::string_view model);

struct FocusPointData {
  FocusCamera camera = FocusCamera::SevenPoints;
  std::array<std::uint8_t, 8> areas{};  ///< of FortyFivePoints: the bytes b0 to b7
  std::uint32_t value = 0;              ///< of the others: the word that holds the active points
  bool circle = false;                  ///< of SevenPoints: the partial metering circle shows
  int rotation = 0;                     ///< clockwise degrees, 0, 90, 180 or 270, by which the picture was turned
};

/// What `exif` knows of the focus points; nothing for another camera, or where the camera's word is not known.
std::optional<FocusPointData> FocusPointsOf(const metadata::ExifData& exif, bool useJpegExifOrientation);

/// Two hollow rectangles, the one given and the one a pixel inside it. All four edges belong to it.
struct FocusBox {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool active = false;
  bool operator==(const FocusBox&) const = default;
};
struct FocusCircle {
  int x = 0, y = 0, radius = 0;
  bool operator==(const FocusCircle&) const = default;
};
struct FocusOverlay {
  std::optional<FocusCircle> circle;
  std::vector<FocusBox> boxes;
};

/// The marks for a bitmap of this size. A portrait bitmap without a rotation counts as turned by 270 degrees. No marks
/// for a word that says nothing.
FocusOverlay LayOutFocusPoints(const FocusPointData& data, int width, int height);

/// Draws the marks, lines of one pixel, into an 8-bit picture.
void PaintFocusPoints(imaging::PixelBuffer& picture, const FocusOverlay& overlay);

}  // namespace ml::imagefiles
