#pragma once

#include <memory>
#include <string>

#include "imagefiles/develop_library.h"
#include "rawconvert/camera_image.h"
#include "rawconvert/development_sdk.h"

namespace ml::rawconvert {

/// What develops the raw files of Canon cameras: both engines, and the whole picture with the settings of the shot for
/// those who edit files. Tests put fakes in their place.
class RawDeveloper final : public imagefiles::DevelopLibrary {
 public:
  RawDeveloper(std::unique_ptr<DevelopmentSdk> development, std::unique_ptr<CameraImageSdk> cameraImage);

  DevelopmentSdk& Development() { return *development_; }
  CameraImageHost& CameraImages() { return cameraImages_; }

  imaging::PixelBuffer Develop(const std::string& path) override;

 private:
  std::unique_ptr<DevelopmentSdk> development_;
  std::unique_ptr<CameraImageSdk> cameraImageSdk_;
  CameraImageHost cameraImages_;
};

/// The one over the raw decoder of this system. Starts nothing until a file is developed.
std::unique_ptr<RawDeveloper> MakeRawDeveloper();

}  // namespace ml::rawconvert
