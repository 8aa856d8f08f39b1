#pragma once

#include <map>
#include <memory>

#include "rawconvert/camera_image_sdk.h"
#include "rawconvert/libraw/raw_file.h"

namespace ml::rawconvert {

/// The engine of the EOS-1D family over the raw decoder. An item's handle is also that of its picture.
class LibRawCameraImage final : public CameraImageSdk {
 public:
  LibRawCameraImage();
  ~LibRawCameraImage() override;

  Code StartSdk(int version) override;
  Code FinishSdk() override;
  Code OpenSource(Handle& source) override;
  Code CloseSource(Handle source) override;
  Code MakeImageItem(Handle source, const std::string& path, std::uint32_t type, Handle& item) override;
  Code OpenImage(Handle item) override;
  Code CloseImage(Handle item) override;
  Code GetPicture(Handle item, Handle& picture) override;
  Code EnumPropertyReset(Handle item) override;
  Code EnumPropertyRelease(Handle item) override;
  Code GetProperty(Handle item, std::uint32_t property, std::uint16_t& value) override;
  Code SetDevParam(Handle picture, DevParam param, int value, int second) override;
  Code SetWhiteBalance(Handle picture, std::uint16_t mode, std::span<const std::byte> data) override;
  Code GetDevelopedImageData(Handle picture, CameraImageFormat format, std::span<std::byte> pixels,
                             const DevelopWatch& watch) override;
  Code GetCoefficients(Handle picture, WhiteBalanceCoefficients& coefficients) override;
  Code FlashDevParam(Handle picture) override;

 private:
  struct Item;
  Item* Find(Handle item);

  Handle last_ = 0;
  std::map<Handle, std::unique_ptr<Item>> items_;
};

}  // namespace ml::rawconvert
