#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

enum class MagickFormat { Tiff, Gif, Bmp };

/// What a picture is resampled with; the numbers are the library's.
enum class ResizeFilter { Mitchell = 12, Lanczos = 13, Sinc = 15 };

struct UnsharpMask {
  double radius = 0.5;
  double sigma = 1.0;
  double amount = 0.7;     ///< a factor
  double threshold = 0.0;  ///< 0..1 of the whole range
};

/// A picture of the imaging library, eight bytes a pixel. The library is started by the first one and bounded:
/// kMaxPixelsWhole, nothing on disk, its signal handlers left out, one thread a call. Different pictures may be
/// used on different threads.
class MagickImage {
 public:
  /// The first picture of a file held in memory, which must be of the told format. Throws LibraryError with the
  /// library's reason and description.
  static MagickImage Read(std::span<const std::byte> file, MagickFormat format);
  /// A picture of these pixels: rows without padding, red first, one or two bytes a sample. Throws LibraryError.
  static MagickImage FromPixels(const PixelBuffer& pixels);

  MagickImage(MagickImage&&) noexcept;
  MagickImage& operator=(MagickImage&&) noexcept;
  ~MagickImage();

  int Width() const;
  int Height() const;
  /// Whether the library met an error after it had begun to give pixels.
  bool Damaged() const;

  /// 8-bit red, green and blue: the high bytes of the samples, over white where the picture is transparent.
  /// Throws LibraryError.
  PixelBuffer ToRgb() const;
  /// All samples, with two bytes or one, rounded, each. Throws LibraryError.
  PixelBuffer ToPixels(int bytesPerSample) const;

  /// "black,mid,white" on the scale 0..65535. This and what follows tell whether the library did it; if not, the
  /// picture is as it was. Works on as many threads as OpenMP may use.
  bool Level(const std::string& levels);
  /// "brightness,saturation,hue" in percent.
  bool Modulate(const std::string& percents);
  /// "red,green,blue,opacity", or a single number for all.
  bool Gamma(const std::string& gammas);
  bool Resize(int width, int height, ResizeFilter filter);
  bool Sharpen(const UnsharpMask& mask);

 private:
  struct State;
  /// Takes the result of a call in place of the picture, if there is one.
  bool Replace(void* image);
  explicit MagickImage(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace ml::imaging
