#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/errors.h"
#include "rawconvert/camera_image_sdk.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/development_sdk.h"

namespace ml::test {

/// Develops what it is told to and writes down how it was asked.
class FakeDevelopment final : public rawconvert::DevelopmentSdk {
 public:
  struct Asked {
    rawconvert::RawDevelopParams params;
    rawconvert::DevelopRequest request;
  };
  std::vector<std::string> opened, expected;
  std::vector<Asked> asked;
  rawconvert::PictureSize size{8, 6};
  int missingFor = 0;         ///< as many times there is no such file
  std::uint32_t failure = 0;  ///< code thrown by every development
  bool eightBitOnly = false;  ///< gives 8 bits whatever is asked
  rawconvert::WhiteBalanceCoefficients computed{{2.0F, 1.0F, 1.5F, 1.0F}};
  /// Sample `channel` of a pixel; 16-bit, of which 8-bit results take the high byte.
  std::function<std::uint16_t(const Asked&, int x, int y, int channel)> sample =
      [](const Asked&, int x, int y, int channel) { return static_cast<std::uint16_t>(x * 4096 + y * 256 + channel); };

  std::unique_ptr<rawconvert::DevelopablePicture> Open(const std::string& path) override {
    opened.push_back(path);
    if (missingFor-- > 0) return nullptr;
    return std::make_unique<Picture>(*this);
  }
  void Expect(const std::string& path, const std::stop_token&) override { expected.push_back(path); }

 private:
  class Picture final : public rawconvert::DevelopablePicture {
   public:
    explicit Picture(FakeDevelopment& owner) : owner_(owner) {}
    rawconvert::PictureSize Size() const override { return owner_.size; }
    imaging::PixelBuffer Develop(rawconvert::RawDevelopParams& params, const rawconvert::DevelopRequest& request,
                                 const rawconvert::DevelopWatch& watch) override {
      return owner_.Make(params, request, watch);
    }

   private:
    FakeDevelopment& owner_;
  };

  imaging::PixelBuffer Make(rawconvert::RawDevelopParams& params, const rawconvert::DevelopRequest& request,
                            const rawconvert::DevelopWatch& watch) {
    asked.push_back({params, request});
    if (watch.stop.stop_requested()) throw platform::Cancelled();
    if (failure != 0) throw rawconvert::DevelopError(failure);
    if (watch.progress != nullptr) watch.progress->percent(100);
    params.SetCoefficients(computed);
    const bool wide = request.output == rawconvert::OutputCode::Bits16 && !eightBitOnly;
    const int part = request.scale == rawconvert::DevelopScale::Small ? 2 : 1;
    auto pixels =
        imaging::MakePixelBuffer(size.width / part, size.height / part, imaging::PixelOrder::Rgb, wide ? 2 : 1);
    auto* out = pixels.data.data();
    for (int y = 0; y < pixels.height; ++y) {
      for (int i = 0; i < pixels.width * 3; ++i) {
        const std::uint16_t value = sample(asked.back(), i / 3, y, i % 3);
        if (wide) *out++ = static_cast<std::byte>(value & 0xFF);
        *out++ = static_cast<std::byte>(value >> 8);
      }
    }
    return pixels;
  }
};

/// Notes every call of the camera image engine as a line, and fails where it is told to.
class FakeCameraImage final : public rawconvert::CameraImageSdk {
 public:
  std::vector<std::string> calls;
  int worksFromVersion = 5;
  std::uint32_t type = 0x102;           ///< the only one it makes items of
  std::string failing;                  ///< calls whose line begins with this fail ..
  Code failure = 0x22;                  ///< .. with this code
  std::uint16_t width = 4, height = 2;  ///< pixels
  std::byte fill{0x12};                 ///< of every byte developed
  rawconvert::WhiteBalanceCoefficients computed{{2.0F, 1.0F, 1.5F, 1.0F}};

  Code StartSdk(int version) override {
    const auto code = Note("start " + std::to_string(version));
    return version < worksFromVersion ? 6 : code;
  }
  Code FinishSdk() override { return Note("finish"); }
  Code OpenSource(Handle& source) override { return source = 1, Note("source"); }
  Code CloseSource(Handle) override { return Note("close source"); }
  Code MakeImageItem(Handle, const std::string&, std::uint32_t asked, Handle& item) override {
    const auto code = Note("item " + std::to_string(asked));
    item = 2;
    return asked == type ? code : 0x2C;
  }
  Code OpenImage(Handle) override { return Note("open"); }
  Code CloseImage(Handle) override { return Note("close"); }
  Code GetPicture(Handle, Handle& picture) override { return picture = 3, Note("picture"); }
  Code EnumPropertyReset(Handle) override { return Note("reset"); }
  Code EnumPropertyRelease(Handle) override { return Note("release"); }
  Code GetProperty(Handle, std::uint32_t property, std::uint16_t& value) override {
    value = property == rawconvert::kPropertyWidth ? width : height;
    return Note(property == rawconvert::kPropertyWidth ? "width" : "height");
  }
  Code SetDevParam(Handle, rawconvert::DevParam param, int value, int second) override {
    static constexpr const char* kNames[] = {"gain", "false colour", "linear",          "matrix",
                                             "edge", "contrast",     "depth",           "enhance",
                                             "hue",  "colour space", "false resolution"};
    return Note(kNames[static_cast<int>(param)] + (" " + std::to_string(value)) +
                (param == rawconvert::DevParam::Edge ? " " + std::to_string(second) : ""));
  }
  Code SetWhiteBalance(Handle, std::uint16_t mode, std::span<const std::byte> data) override {
    std::string line = "white balance " + std::to_string(mode) + ":";
    for (const auto byte : data) line += " " + std::to_string(std::to_integer<int>(byte));
    return Note(line);
  }
  Code GetDevelopedImageData(Handle, rawconvert::CameraImageFormat format, std::span<std::byte> pixels,
                             const rawconvert::DevelopWatch& watch) override {
    std::ranges::fill(pixels, fill);
    const auto code = Note("develop " + std::to_string(static_cast<int>(format)) + " " + std::to_string(pixels.size()));
    return watch.stop.stop_requested() ? 5 : code;
  }
  Code GetCoefficients(Handle, rawconvert::WhiteBalanceCoefficients& coefficients) override {
    coefficients = computed;
    return Note("coefficients");
  }
  Code FlashDevParam(Handle) override { return Note("flash"); }

 private:
  Code Note(std::string line) {
    calls.push_back(std::move(line));
    return !failing.empty() && calls.back().starts_with(failing) ? failure : 0;
  }
};

}  // namespace ml::test
