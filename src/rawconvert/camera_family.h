#pragma once

#include <string>

#include "metadata/exif_data.h"

namespace ml::rawconvert {

/// Which kind of camera a file is from: decides which settings exist and who develops it.
struct CameraFamily {
  bool isNef = false;
  bool isEos1D = false;
  bool isEos1Ds = false;
  bool isD60 = false;
  bool is10D = false;  ///< 10D, 300D, Kiss and Rebel
  bool hasPhotoEffects = false;
  bool is8BitOnly = false;

  /// The settings of the two Canon SLR families whose sharpness knows "No sharpening".
  bool HasNoSharpening() const { return isD60 || is10D; }
  bool operator==(const CameraFamily&) const = default;
};

/// The preview asks for "eos kiss digital" where everyone else takes "eos kiss".
enum class FamilyTest { Conversion, Preview };

/// `exif` is that of the file `path`.
CameraFamily FamilyOf(const std::string& path, const metadata::ExifData& exif,
                      FamilyTest test = FamilyTest::Conversion);

/// Who develops a file.
enum class DevelopPath { OwnDecoder, CameraImage, Development };
DevelopPath PathOf(const CameraFamily& family);

}  // namespace ml::rawconvert
