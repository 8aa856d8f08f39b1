#pragma once

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>

#include "imaging/decoded_picture.h"
#include "imaging/pixel_buffer.h"
#include "rawconvert/develop_watch.h"
#include "rawconvert/raw_develop_params.h"

namespace ml::rawconvert {

/// Samples of the result; every linear render takes Bits16.
enum class OutputCode : std::uint8_t { Bits8 = 0, Bits16 = 7 };
/// Small is for previews: half the width and height, and none of the steps that only show in full size.
enum class DevelopScale { Full, Small };

struct DevelopRequest {
  OutputCode output = OutputCode::Bits8;
  DevelopScale scale = DevelopScale::Full;
  int colourTemperature = 5800;  ///< kelvin, for the white balance "Color temp"
};

/// Pixels, as the sensor saw it, not turned.
using imaging::PictureSize;

/// One opened raw file. For one thread at a time.
class DevelopablePicture {
 public:
  virtual ~DevelopablePicture() = default;
  DevelopablePicture(const DevelopablePicture&) = delete;
  DevelopablePicture& operator=(const DevelopablePicture&) = delete;

  /// Of the full development.
  virtual PictureSize Size() const = 0;
  /// Interleaved red, green, blue with no padding, not turned. Cameras that only do 8 bits give 8 bits whatever was
  /// asked for. Leaves the white balance that it took in `params`, so that the same with a white balance of -1
  /// repeats it. Throws DevelopError, Cancelled.
  virtual imaging::PixelBuffer Develop(RawDevelopParams& params, const DevelopRequest& request,
                                       const DevelopWatch& watch) = 0;

 protected:
  DevelopablePicture() = default;
};

/// Develops the raw files of all Canon cameras but the EOS-1D family. PictureCollection is how the conversion uses it.
class DevelopmentSdk {
 public:
  virtual ~DevelopmentSdk() = default;
  DevelopmentSdk(const DevelopmentSdk&) = delete;
  DevelopmentSdk& operator=(const DevelopmentSdk&) = delete;

  /// Null if there is no such file. Throws DevelopError. May be called by several threads.
  virtual std::unique_ptr<DevelopablePicture> Open(const std::string& path) = 0;
  /// Tells which file is opened after the one that is opened next, so that its data may be decoded beside the
  /// development of that one; empty for none. Changes nothing but the time that things take.
  virtual void Expect(const std::string& path, const std::stop_token& stop) {
    static_cast<void>(path), static_cast<void>(stop);
  }

 protected:
  DevelopmentSdk() = default;
};

}  // namespace ml::rawconvert
