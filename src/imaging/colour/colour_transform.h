#pragma once

#include "imaging/colour/colour_profile.h"
#include "imaging/pixel_buffer.h"

namespace ml::imaging {

/// The numbers are those of the ICC.
enum class RenderingIntent { Perceptual = 0, AbsoluteColorimetric = 3 };

/// The way from one profile's colours to another's, for 8-bit pixels in one order; false where there is none. Belongs
/// to the thread that made it, and needs the profiles no longer.
class ColourTransform {
 public:
  /// Nothing unless both profiles are open and are RGB.
  ColourTransform(const ColourProfile& from, const ColourProfile& to, RenderingIntent intent, PixelOrder order);
  ColourTransform(const ColourTransform&) = delete;
  ColourTransform& operator=(const ColourTransform&) = delete;
  ~ColourTransform();

  explicit operator bool() const { return handle_ != nullptr; }
  /// Changes the pixels that show in place, the padding stays. `picture` is 8-bit and in the order told. Without a
  /// way it stays as it is.
  void Apply(PixelBuffer& picture) const;

 private:
  void* handle_ = nullptr;
};

}  // namespace ml::imaging
