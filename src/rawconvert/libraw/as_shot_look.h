#pragma once

#include "metadata/exif_data.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/look/picture_look.h"
#include "rawconvert/raw_develop_params.h"

/// How a picture is to look by a development's parameters, "as shot" taken from the shooting data.
namespace ml::rawconvert {

/// Every parameter as shot.
RawDevelopParams AsShotParams();

/// Without white balance. `exif` and `family` are of the file.
PictureLook LookOf(const RawDevelopParams& params, const metadata::ExifData& exif, const CameraFamily& family);

}  // namespace ml::rawconvert
