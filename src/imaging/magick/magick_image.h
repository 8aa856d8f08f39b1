#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "imaging/pixel_buffer.h"

namespace ml::imaging {

enum class MagickFormat { Tiff, Gif, Bmp };

/// A picture of the imaging library, eight bytes a pixel. The library is started by the first one and bounded:
/// kMaxPixelsWhole, nothing on disk, its signal handlers left out, one thread a call. Different pictures may be
/// used on different threads.
class MagickImage {
 public:
  /// The first picture of a file held in memory, which must be of the told format. Throws LibraryError with the
  /// library's reason and description.
  static MagickImage Read(std::span<const std::byte> file, MagickFormat format);

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

 private:
  struct State;
  explicit MagickImage(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace ml::imaging
