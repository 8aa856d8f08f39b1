#include "rawconvert/libraw/libraw_development.h"

#include <utility>

#include "rawconvert/camera_family.h"
#include "rawconvert/libraw/as_shot_look.h"
#include "rawconvert/libraw/raw_file.h"

namespace ml::rawconvert {
namespace {

class Picture final : public DevelopablePicture {
 public:
  Picture(const std::string& path, std::unique_ptr<RawFile> file)
      : exif_(path), family_(FamilyOf(path, exif_)), file_(std::move(file)) {}

  PictureSize Size() const override { return file_->Size(); }

  imaging::PixelBuffer Develop(RawDevelopParams& params, const DevelopRequest& request,
                               const DevelopWatch& watch) override {
    const bool wide = (request.output == OutputCode::Bits16 || params.Linear()) && !family_.is8BitOnly;
    auto result = file_->Develop({.whiteBalance = {.code = params.WhiteBalance(),
                                                   .kelvin = request.colourTemperature,
                                                   .point = params.CustomPoint(),
                                                   .coefficients = params.Coefficients()},
                                  .look = LookOf(params, exif_, family_),
                                  .bytesPerSample = wide ? 2 : 1,
                                  .small = request.scale == DevelopScale::Small},
                                 watch);
    params.SetCoefficients(result.coefficients);
    return std::move(result.pixels);
  }

 private:
  metadata::ExifData exif_;
  CameraFamily family_;
  std::unique_ptr<RawFile> file_;
};

}  // namespace

std::unique_ptr<DevelopablePicture> LibRawDevelopment::Open(const std::string& path) {
  auto file = RawFile::Open(path);
  if (file == nullptr) return nullptr;
  return std::make_unique<Picture>(path, std::move(file));
}

}  // namespace ml::rawconvert
