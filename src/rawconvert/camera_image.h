#pragma once

#include <cstdint>
#include <string>

#include "imaging/pixel_buffer.h"
#include "rawconvert/camera_image_sdk.h"

namespace ml::rawconvert {

/// What all images of a run share: whether the engine is started, with which version, and the white balance of the
/// last development. For one thread at a time; must outlive its images.
class CameraImageHost {
 public:
  explicit CameraImageHost(CameraImageSdk& sdk) : sdk_(sdk) {}
  CameraImageHost(const CameraImageHost&) = delete;
  CameraImageHost& operator=(const CameraImageHost&) = delete;

  CameraImageSdk& Sdk() { return sdk_; }
  CameraImageSdk::Handle Source() const { return source_; }
  /// Only the first user starts the engine, only the last one ends it. Throws CameraImageError, and is not in use then.
  void Use();
  void Release();

  WhiteBalanceCoefficients coefficients;  ///< of the last development; stays when the engine ends

 private:
  CameraImageSdk& sdk_;
  int users_ = 0;
  int version_ = 0;  ///< that worked last; 0 is none yet
  CameraImageSdk::Handle source_ = 0;
};

/// One raw file of the EOS-1D family and how it is to be developed.
class CameraImage {
 public:
  /// A file that cannot be opened leaves its sentence in `error`.
  CameraImage(const std::string& path, CameraImageHost& host);
  ~CameraImage();
  CameraImage(const CameraImage&) = delete;
  CameraImage& operator=(const CameraImage&) = delete;

  std::string error;
  bool falseColourFilter = true;
  int customX = 0, customY = 0;  ///< custom white point
  int colourTemperature = 5800;  ///< kelvin
  std::uint16_t colourMatrix = 0;
  std::uint16_t edgeLevel = 3, edgeObject = 3;
  bool falseResolutionFilter = false;
  bool linear = false;

  /// Tenths of a stop, taken into -20..20.
  void SetDigitalGain(int tenths);
  int DigitalGain() const { return digitalGain_; }
  /// -1 is the custom point, kAsShot as shot, 4095 reuses the host's coefficients (as shot if there are none); other
  /// codes of the white balance table as they stand.
  void SetWhiteBalance(int code);
  std::uint16_t WhiteBalance() const { return whiteBalance_; }

  /// As DevelopablePicture::Develop. `wish16` holds unless the model decides. Throws CameraImageError, Cancelled.
  imaging::PixelBuffer Develop(const std::string& model, bool wish16, const DevelopWatch& watch);
  /// Follows a preview. Changes no file.
  void StoreParameters();

 private:
  void Open(const std::string& path);
  void SetParameters(bool isEos1Ds);
  void SendWhiteBalance();

  CameraImageHost& host_;
  bool used_ = false;
  bool opened_ = false;
  CameraImageSdk::Handle item_ = 0;
  CameraImageSdk::Handle picture_ = 0;
  int digitalGain_ = 0;
  std::uint16_t whiteBalance_ = camera_white_balance::kAsShot;
};

}  // namespace ml::rawconvert
