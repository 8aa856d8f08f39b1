#include "rawconvert/raw_developer.h"

#include <utility>

#include "metadata/exif_data.h"
#include "platform/errors.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/libraw/as_shot_look.h"
#include "rawconvert/libraw/libraw_camera_image.h"
#include "rawconvert/libraw/libraw_development.h"
#include "rawconvert/messages.h"
#include "rawconvert/model_support.h"
#include "rawconvert/picture_collection.h"

namespace ml::rawconvert {
namespace {

/// Without the end of its line.
std::string Complaint(const DevelopError& error, const std::string& model) {
  auto text = RawFileComplaint(error.Code(), model);
  if (text.empty()) return error.what();
  text.pop_back();
  return text;
}

imaging::PixelBuffer DevelopCollection(const std::string& path, DevelopmentSdk& sdk) {
  if (!IsDevelopableName(path)) throw platform::UserError(messages::CannotDevelop(path, messages::kNameTooLong));
  PictureCollection pictures(path, sdk);
  if (!pictures.HasPicture()) throw platform::UserError(messages::CannotDevelop(path, messages::kUnableToOpen));
  auto params = AsShotParams();
  return pictures.Develop(params, {}, {});
}

imaging::PixelBuffer DevelopCameraImage(const std::string& path, const std::string& model, CameraImageHost& host) {
  try {
    return CameraImage(path, host).Develop({}, model, false, {});
  } catch (const platform::UserError& error) {
    throw platform::UserError(messages::CannotDevelop(path, error.what()));
  }
}

}  // namespace

RawDeveloper::RawDeveloper(std::unique_ptr<DevelopmentSdk> development, std::unique_ptr<CameraImageSdk> cameraImage)
    : development_(std::move(development)), cameraImageSdk_(std::move(cameraImage)), cameraImages_(*cameraImageSdk_) {}

imaging::PixelBuffer RawDeveloper::Develop(const std::string& path) {
  const metadata::ExifData exif(path);
  RequireConvertible(exif);
  try {
    return PathOf(FamilyOf(path, exif)) == DevelopPath::CameraImage
               ? DevelopCameraImage(path, exif.model, cameraImages_)
               : DevelopCollection(path, *development_);
  } catch (const DevelopError& error) {
    throw platform::UserError(messages::CannotDevelop(path, Complaint(error, exif.model)));
  } catch (const CameraImageError& error) {
    throw platform::UserError(messages::CannotDevelop(path, error.what()));
  }
}

std::unique_ptr<RawDeveloper> MakeRawDeveloper() {
  return std::make_unique<RawDeveloper>(std::make_unique<LibRawDevelopment>(), std::make_unique<LibRawCameraImage>());
}

}  // namespace ml::rawconvert
