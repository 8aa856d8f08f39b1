#include "imaging/colour/colour_transform.h"

#include <lcms2.h>

#include <cassert>

namespace ml::imaging {

ColourTransform::ColourTransform(const ColourProfile& from, const ColourProfile& to, RenderingIntent intent,
                                 PixelOrder order) {
  if (!from.IsRgb() || !to.IsRgb()) return;
  const cmsUInt32Number format = order == PixelOrder::Bgr ? TYPE_BGR_8 : TYPE_RGB_8;
  handle_ =
      cmsCreateTransform(from.handle_, format, to.handle_, format, static_cast<cmsUInt32Number>(intent), /*flags*/ 0);
}

ColourTransform::~ColourTransform() {
  if (handle_ != nullptr) cmsDeleteTransform(handle_);
}

void ColourTransform::Apply(PixelBuffer& picture) const {
  assert(picture.bytesPerSample == 1);
  if (handle_ == nullptr || picture.Empty()) return;
  const auto rowBytes = static_cast<cmsUInt32Number>(picture.RowBytes());
  cmsDoTransformLineStride(handle_, picture.data.data(), picture.data.data(),
                           static_cast<cmsUInt32Number>(picture.width), static_cast<cmsUInt32Number>(picture.height),
                           rowBytes, rowBytes, 0, 0);
}

}  // namespace ml::imaging
