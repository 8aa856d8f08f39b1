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

  /// Only where this is what develops such a file.
  void Prepare(const std::stop_token& stop) {
    if (PathOf(family_) == DevelopPath::Development) file_->Prepare(stop);
  }

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

std::unique_ptr<Picture> OpenPicture(const std::string& path) {
  auto file = RawFile::Open(path);
  if (file == nullptr) return nullptr;
  return std::make_unique<Picture>(path, std::move(file));
}

std::unique_ptr<DevelopablePicture> MakeReady(const std::string& path, const std::stop_token& stop) {
  try {
    auto picture = OpenPicture(path);
    if (picture != nullptr) picture->Prepare(stop);
    return picture;
  } catch (const std::exception&) {
    return nullptr;  // what failed fails again when the file is opened
  }
}

}  // namespace

std::unique_ptr<DevelopablePicture> LibRawDevelopment::Open(const std::string& path) {
  Expected mine;
  {
    const std::scoped_lock lock(mutex_);
    std::swap(mine, ready_);
    if (!next_.empty()) ready_ = {next_, std::async(std::launch::async, MakeReady, next_, nextStop_)};
    next_.clear();
  }
  auto picture = mine.path == path && mine.picture.valid() ? mine.picture.get() : nullptr;
  return picture != nullptr ? std::move(picture) : OpenPicture(path);
}

void LibRawDevelopment::Expect(const std::string& path, const std::stop_token& stop) {
  const std::scoped_lock lock(mutex_);
  if (path.empty()) ready_ = {};
  next_ = path;
  nextStop_ = stop;
}

}  // namespace ml::rawconvert
