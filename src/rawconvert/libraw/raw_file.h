#pragma once

#include <memory>
#include <string>

#include "imaging/decoded_picture.h"
#include "imaging/pixel_buffer.h"
#include "rawconvert/develop_watch.h"
#include "rawconvert/libraw/white_balance.h"
#include "rawconvert/look/picture_look.h"

namespace ml::rawconvert {

struct RawOrder {
  WhiteBalanceChoice whiteBalance;
  PictureLook look;
  int bytesPerSample = 1;
  bool small = false;  ///< half the width and height
};

struct RawResult {
  imaging::PixelBuffer pixels;  ///< red, green, blue, no padding, not turned
  WhiteBalanceCoefficients coefficients;
};

/// A raw file opened for development; the sensor's data are decoded once for all developments. For one thread at a
/// time, but develops on all processors. Every call throws DevelopError or Cancelled.
class RawFile {
 public:
  /// Null if there is no readable file.
  static std::unique_ptr<RawFile> Open(const std::string& path);
  ~RawFile();
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;

  /// Decodes the sensor's data, which the first development would do otherwise.
  void Prepare(const std::stop_token& stop);
  /// Of a full development.
  imaging::PictureSize Size() const;
  RawResult Develop(const RawOrder& order, const DevelopWatch& watch);

 private:
  class Decoder;
  explicit RawFile(std::unique_ptr<Decoder> decoder);
  std::unique_ptr<Decoder> decoder_;
};

}  // namespace ml::rawconvert
