#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "imaging/pixel_buffer.h"
#include "rawconvert/camera_image_sdk.h"
#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

/// What all images of a run share: whether the engine is started, with which version, and the white balance of the
/// last development. For one thread at a time; must outlive its images.
class CameraImageHost {
 public:
  explicit CameraImageHost(CameraImageSdk& sdk) : sdk_(sdk) {}
  CameraImageHost(const CameraImageHost&) = delete;
  CameraImageHost& operator=(const CameraImageHost&) = delete;

  /// A user of the engine: only the first one starts it, only the last one ends it.
  class Use {
   public:
    /// Throws CameraImageError, and nothing is in use then.
    explicit Use(CameraImageHost& host) : host_(host) { host_.Begin(); }
    ~Use() { host_.End(); }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    CameraImageHost& host_;
  };

  CameraImageSdk& Sdk() { return sdk_; }
  CameraImageSdk::Handle Source() const { return source_; }

  WhiteBalanceCoefficients coefficients;  ///< of the last development; stays when the engine ends

 private:
  void Begin();
  void End();

  CameraImageSdk& sdk_;
  int users_ = 0;
  int version_ = 0;  ///< that worked last; 0 is none yet
  CameraImageSdk::Handle source_ = 0;
};

/// How a raw file of the EOS-1D family is to be developed.
struct CameraImageSettings {
  int digitalGain = 0;  ///< tenths of a stop, taken into -20..20
  /// -1 is the custom point, kAsShot as shot, 4095 reuses the host's coefficients (as shot if there are none); other
  /// codes of the white balance table as they stand.
  int whiteBalance = kAsShot;
  int customX = 0, customY = 0;  ///< custom white point
  int colourTemperature = 5800;  ///< kelvin
  std::uint16_t colourMatrix = 0;
  std::uint16_t edgeLevel = 3, edgeObject = 3;
  bool falseColourFilter = true;
  bool falseResolutionFilter = false;
  bool linear = false;
};

/// One raw file of the EOS-1D family, open in its engine.
class CameraImage {
 public:
  /// Throws UserError if the file cannot be opened.
  CameraImage(const std::string& path, CameraImageHost& host);
  ~CameraImage();
  CameraImage(const CameraImage&) = delete;
  CameraImage& operator=(const CameraImage&) = delete;

  /// As DevelopablePicture::Develop. `wish16` holds unless the model decides. Throws CameraImageError, Cancelled.
  imaging::PixelBuffer Develop(const CameraImageSettings& settings, const std::string& model, bool wish16,
                               const DevelopWatch& watch);
  /// Follows a preview. Changes no file.
  void StoreParameters();

 private:
  void Open(const std::string& path);
  void SetParameters(const CameraImageSettings& settings, bool isEos1Ds);
  void SendWhiteBalance(const CameraImageSettings& settings);

  CameraImageHost& host_;
  std::optional<CameraImageHost::Use> use_;
  CameraImageSdk::Handle item_ = 0;
  CameraImageSdk::Handle picture_ = 0;
};

}  // namespace ml::rawconvert
