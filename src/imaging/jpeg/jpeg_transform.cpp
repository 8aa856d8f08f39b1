#include "imaging/jpeg/jpeg_transform.h"

#include <turbojpeg.h>

#include <memory>

#include "imaging/decoded_picture.h"
#include "imaging/jpeg/jpeg_coefficients.h"
#include "metadata/jpeg_size.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

static_assert(TJXOP_HFLIP == static_cast<int>(JpegTransform::FlipHorizontal) &&
              TJXOP_TRANSVERSE == static_cast<int>(JpegTransform::Transverse) &&
              TJXOP_ROT270 == static_cast<int>(JpegTransform::cw270));

struct Destroy {
  void operator()(void* handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, Destroy>;

struct Free {
  void operator()(unsigned char* buffer) const { tjFree(buffer); }
};

[[noreturn]] void RefuseWith(const Handle& handle) { throw platform::LibraryError(tjGetErrorStr2(handle.get()), ""); }

}  // namespace

std::vector<std::byte> TransformJpeg(std::span<const std::byte> jpeg, JpegTransform transform) {
  const Handle handle(tjInitTransform());
  if (!handle) Refuse("The JPEG library does not start");
  const auto* bytes = reinterpret_cast<const unsigned char*>(jpeg.data());
  int width = 0, height = 0, subsampling = 0, colours = 0;
  if (tjDecompressHeader3(handle.get(), bytes, jpeg.size(), &width, &height, &subsampling, &colours) != 0) {
    return TransformCoefficients(jpeg, transform);  // which refuses if it was not the sampling
  }
  CheckPixelCount(width, height, kMaxPixelsWhole);

  tjtransform what{};
  what.op = static_cast<int>(transform);
  const auto frame = metadata::ReadJpegSize(metadata::MemorySource(jpeg));
  what.options = frame && frame->progressive ? TJXOPT_PROGRESSIVE : 0;
  unsigned char* out = nullptr;
  unsigned long size = 0;
  const int failed = tjTransform(handle.get(), bytes, jpeg.size(), 1, &out, &size, &what, TJFLAG_LIMITSCANS);
  const std::unique_ptr<unsigned char, Free> owner(out);
  if (failed != 0 && tjGetErrorCode(handle.get()) != TJERR_WARNING) RefuseWith(handle);
  if (failed != 0) return TransformCoefficients(jpeg, transform);  // which knows what is damage
  const auto whole = std::as_bytes(std::span(out, size));
  return {whole.begin(), whole.end()};
}

}  // namespace ml::imaging
