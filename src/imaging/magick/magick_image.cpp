#include "imaging/magick/magick_image.h"

#include <dlfcn.h>
#include <magick/api.h>

#include <cassert>
#include <cstdint>
#include <cstring>
#include <utility>

#include "imaging/decoded_picture.h"
#include "imaging/messages.h"
#include "imaging/openmp_bound.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

static_assert(QuantumDepth == 16, "samples are taken apart below");

/// The binary interface of the headers above.
constexpr char kLibraryFile[] = "libGraphicsMagick-Q16.so.3";
/// Of all pictures together.
constexpr magick_int64_t kMaxMemory = magick_int64_t{2} * 1024 * 1024 * 1024;
constexpr magick_int64_t kMaxSide = 300'000;
/// How pixels are handed over and taken back.
constexpr char kPixelMap[] = "RGB";

// Of these the library's headers make the names that it exports.
#define ML_MAGICK_FUNCTIONS(USE) \
  USE(AcquireImagePixels)        \
  USE(BlobToImage)               \
  USE(CloneImageInfo)            \
  USE(ConstituteImage)           \
  USE(DestroyExceptionInfo)      \
  USE(DestroyImageInfo)          \
  USE(DestroyImageList)          \
  USE(DispatchImage)             \
  USE(GammaImage)                \
  USE(GetExceptionInfo)          \
  USE(GetImageException)         \
  USE(InitializeMagickEx)        \
  USE(LevelImage)                \
  USE(ModulateImage)             \
  USE(PingBlob)                  \
  USE(ResizeImage)               \
  USE(SetErrorHandler)           \
  USE(SetMagickResourceLimit)    \
  USE(SetWarningHandler)         \
  USE(TransformColorspace)       \
  USE(UnsharpMaskImage)
#define ML_QUOTE(name) #name
#define ML_DECLARE(name) decltype(&::name) name = nullptr;
#define ML_FIND(name) Find(name, ML_QUOTE(name));

/// The library, loaded and started when the first picture needs it: with all that hangs on it, loading takes five
/// times as long as the rest of a program's start.
struct Library {
  ML_MAGICK_FUNCTIONS(ML_DECLARE)

  /// Throws LibraryError.
  Library();

 private:
  template <class Function>
  void Find(Function*& function, const char* name) {
    function = reinterpret_cast<Function*>(dlsym(handle_, name));
    if (function == nullptr) throw platform::LibraryError("The imaging library lacks a function", name);
  }
  void* handle_;
};

#undef ML_DECLARE

const Library& Magick() {
  static const Library library;
  return library;
}

struct Exception : ExceptionInfo {
  explicit Exception(const Library& library = Magick()) : library_(library) { library_.GetExceptionInfo(this); }
  ~Exception() { library_.DestroyExceptionInfo(this); }
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;

  [[noreturn]] void Throw() const {
    throw platform::LibraryError(reason != nullptr ? reason : messages::kUndecodable,
                                 description != nullptr ? description : "");
  }

 private:
  const Library& library_;
};

struct Release {
  void operator()(Image* image) const { Magick().DestroyImageList(image); }
  void operator()(ImageInfo* info) const { Magick().DestroyImageInfo(info); }
};
using ImageHandle = std::unique_ptr<Image, Release>;
using InfoHandle = std::unique_ptr<ImageInfo, Release>;

Library::Library() : handle_(dlopen(kLibraryFile, RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw platform::LibraryError("The imaging library cannot be loaded", dlerror());
  ML_MAGICK_FUNCTIONS(ML_FIND)
  Exception exception(*this);
  if (InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception) == MagickFail) exception.Throw();
  SetErrorHandler(nullptr);  // the usual ones print
  SetWarningHandler(nullptr);
  const std::pair<ResourceType, magick_int64_t> limits[] = {
      {PixelsResource, kMaxPixelsWhole}, {WidthResource, kMaxSide}, {HeightResource, kMaxSide},
      {MemoryResource, kMaxMemory},      {MapResource, 0},          {DiskResource, 0}};
  for (const auto& [type, limit] : limits) SetMagickResourceLimit(type, limit);
}

#undef ML_FIND
#undef ML_QUOTE
#undef ML_MAGICK_FUNCTIONS

/// The name forces the format, so that nothing is guessed from the content and no other program is started.
InfoHandle MakeInfo(MagickFormat format) {
  const char* name = format == MagickFormat::Tiff ? "TIFF" : format == MagickFormat::Gif ? "GIF" : "BMP";
  InfoHandle info(Magick().CloneImageInfo(nullptr));
  std::strcpy(info->magick, name);
  std::strcat(std::strcpy(info->filename, name), ":");
  info->subimage = 0;
  info->subrange = 1;
  return info;
}

void CheckSize(const Image& image) {
  CheckPixelCount(static_cast<long long>(image.columns), static_cast<long long>(image.rows), kMaxPixelsWhole);
}

/// 0 and 1 in the library's table.
constexpr StorageType Storage(int bytesPerSample) { return bytesPerSample == 1 ? CharPixel : ShortPixel; }

constexpr int HighByte(Quantum sample) { return sample >> 8; }

/// Ink of four colours: black stands where other pictures have their transparency.
void ConvertInks(const PixelPacket* in, std::uint8_t* out, int width) {
  for (int x = 0; x < width; ++x, ++in, out += 3) {
    const int light = 255 - HighByte(in->opacity);
    out[0] = static_cast<std::uint8_t>(Multiply255(255 - HighByte(in->red), light));
    out[1] = static_cast<std::uint8_t>(Multiply255(255 - HighByte(in->green), light));
    out[2] = static_cast<std::uint8_t>(Multiply255(255 - HighByte(in->blue), light));
  }
}

void ConvertColours(const PixelPacket* in, std::uint8_t* out, int width, bool transparent) {
  for (int x = 0; x < width; ++x, ++in, out += 3) {
    const int opacity = transparent ? 255 - HighByte(in->opacity) : 255;
    out[0] = static_cast<std::uint8_t>(OverWhite(HighByte(in->red), opacity));
    out[1] = static_cast<std::uint8_t>(OverWhite(HighByte(in->green), opacity));
    out[2] = static_cast<std::uint8_t>(OverWhite(HighByte(in->blue), opacity));
  }
}

}  // namespace

struct MagickImage::State {
  ImageHandle image;
  bool damaged = false;
};

MagickImage::MagickImage(std::unique_ptr<State> state) : state_(std::move(state)) {}
MagickImage::MagickImage(MagickImage&&) noexcept = default;
MagickImage& MagickImage::operator=(MagickImage&&) noexcept = default;
MagickImage::~MagickImage() = default;

MagickImage MagickImage::Read(std::span<const std::byte> file, MagickFormat format) {
  const auto& library = Magick();
  const OpenMpBound bound;
  const auto info = MakeInfo(format);
  {
    Exception exception;
    const ImageHandle header(library.PingBlob(info.get(), file.data(), file.size(), &exception));
    if (header == nullptr) exception.Throw();
    CheckSize(*header);
  }
  Exception exception;
  ImageHandle image(library.BlobToImage(info.get(), file.data(), file.size(), &exception));
  if (image == nullptr) exception.Throw();
  CheckSize(*image);
  // The fourth byte of a BMP pixel is not used, whatever it holds.
  if (format == MagickFormat::Bmp) image->matte = MagickFalse;
  const bool ready = image->colorspace == RGBColorspace || image->colorspace == CMYKColorspace ||
                     image->colorspace == TransparentColorspace || IsGrayColorspace(image->colorspace);
  if (!ready && library.TransformColorspace(image.get(), RGBColorspace) == MagickFail) {
    Exception reason;
    library.GetImageException(image.get(), &reason);
    reason.Throw();
  }
  auto state = std::make_unique<State>();
  state->damaged = exception.severity >= ErrorException || image->exception.severity >= ErrorException;
  state->image = std::move(image);
  return MagickImage(std::move(state));
}

int MagickImage::Width() const { return static_cast<int>(state_->image->columns); }
int MagickImage::Height() const { return static_cast<int>(state_->image->rows); }
bool MagickImage::Damaged() const { return state_->damaged; }

PixelBuffer MagickImage::ToRgb() const {
  const OpenMpBound bound;
  const auto& image = *state_->image;
  auto pixels = MakePixelBuffer(Width(), Height());
  Exception exception;
  for (int y = 0; y < pixels.height; ++y) {
    const auto* row = Magick().AcquireImagePixels(&image, 0, y, image.columns, 1, &exception);
    if (row == nullptr) exception.Throw();
    auto* out = reinterpret_cast<std::uint8_t*>(pixels.Row(y));
    if (image.colorspace == CMYKColorspace) {
      ConvertInks(row, out, pixels.width);
    } else {
      ConvertColours(row, out, pixels.width, image.matte != MagickFalse);
    }
  }
  return pixels;
}

MagickImage MagickImage::FromPixels(const PixelBuffer& pixels) {
  assert(pixels.stride == pixels.width && pixels.order == PixelOrder::Rgb);
  CheckPixelCount(pixels.width, pixels.height, kMaxPixelsWhole);
  Exception exception;
  auto state = std::make_unique<State>();
  state->image.reset(Magick().ConstituteImage(static_cast<unsigned long>(pixels.width),
                                              static_cast<unsigned long>(pixels.height), kPixelMap,
                                              Storage(pixels.bytesPerSample), pixels.data.data(), &exception));
  if (state->image == nullptr) exception.Throw();
  return MagickImage(std::move(state));
}

PixelBuffer MagickImage::ToPixels(int bytesPerSample) const {
  auto pixels = MakePixelBuffer(Width(), Height(), PixelOrder::Rgb, bytesPerSample);
  Exception exception;
  if (Magick().DispatchImage(state_->image.get(), 0, 0, state_->image->columns, state_->image->rows, kPixelMap,
                             Storage(bytesPerSample), pixels.data.data(), &exception) == MagickFail)
    exception.Throw();
  return pixels;
}

bool MagickImage::Level(const std::string& levels) {
  return Magick().LevelImage(state_->image.get(), levels.c_str()) != MagickFail;
}

bool MagickImage::Modulate(const std::string& percents) {
  return Magick().ModulateImage(state_->image.get(), percents.c_str()) != MagickFail;
}

bool MagickImage::Gamma(const std::string& gammas) {
  return Magick().GammaImage(state_->image.get(), gammas.c_str()) != MagickFail;
}

bool MagickImage::Replace(void* image) {
  if (image == nullptr) return false;
  state_->image.reset(static_cast<Image*>(image));
  return true;
}

bool MagickImage::Resize(int width, int height, ResizeFilter filter) {
  constexpr double kBlur = 1.0;
  Exception exception;
  return Replace(Magick().ResizeImage(state_->image.get(), static_cast<unsigned long>(width),
                                      static_cast<unsigned long>(height), static_cast<FilterTypes>(filter), kBlur,
                                      &exception));
}

bool MagickImage::Sharpen(const UnsharpMask& mask) {
  Exception exception;
  return Replace(
      Magick().UnsharpMaskImage(state_->image.get(), mask.radius, mask.sigma, mask.amount, mask.threshold, &exception));
}

}  // namespace ml::imaging
