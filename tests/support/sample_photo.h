#pragma once

#include <string>

/// Pictures to try the program on, painted by rule: the same arguments give the same file.
namespace ml::test {

/// Rows of red, green, blue without padding.
struct Picture {
  int width = 0, height = 0;
  std::string rgb;
};

/// Hills under a sky with a sun, textured like a photograph. The same seed gives the same view at any size.
Picture PaintLandscape(int width, int height, unsigned seed);
/// One colour, 0xRRGGBB.
Picture PaintPlain(int width, int height, unsigned colour);

enum class JpegColours { YCbCr, Grey, CmykAdobe, CmykPlain };
struct JpegEncoding {
  int quality = 85;
  JpegColours colours = JpegColours::YCbCr;
  bool progressive = false;
  bool fullChroma = false;     ///< no subsampling
  bool unusualChroma = false;  ///< one colour halved across, the other one down, as no camera does
};
/// The CMYK forms hold the picture's colours without any black.
std::string EncodeJpeg(const Picture& picture, const JpegEncoding& encoding = {});

/// A camera's JPEG.
struct SamplePhoto {
  int width = 1536, height = 1024;
  unsigned seed = 1;
  int quality = 90;
  bool thumbnail = true;  ///< 160 pixels on the longer side
  int orientation = 1;    ///< tag 274; the pixels are not turned
  std::string dateTime = "2003:05:17 10:11:12";
  std::string make = "Tarnwick", model = "Sample";
};
std::string MakePhoto(const SamplePhoto& photo);

}  // namespace ml::test
