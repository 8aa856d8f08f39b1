#include "imaging/tiff/tiff_reader.h"

#include <dlfcn.h>
#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "imaging/decoded_picture.h"
#include "imaging/tiff/messages.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using platform::LibraryError;

/// The binary interface of the headers above.
constexpr char kLibraryFile[] = "libtiff.so.6";
constexpr std::size_t kMaxBytes = std::size_t{1} << 31;
/// Bytes of samples from one byte of a file; more is told by files that lie. Pictures of bits may be emptier.
constexpr std::uint64_t kMaxRatio = 4096;
constexpr std::uint32_t kMaxSamples = 64;

#define ML_TIFF_FUNCTIONS(USE)              \
  USE(TIFFClientOpenExt)                    \
  USE(TIFFClose)                            \
  USE(TIFFGetField)                         \
  USE(TIFFGetFieldDefaulted)                \
  USE(TIFFIsTiled)                          \
  USE(TIFFOpenOptionsAlloc)                 \
  USE(TIFFOpenOptionsFree)                  \
  USE(TIFFOpenOptionsSetErrorHandlerExtR)   \
  USE(TIFFOpenOptionsSetMaxSingleMemAlloc)  \
  USE(TIFFOpenOptionsSetWarningHandlerExtR) \
  USE(TIFFReadEncodedStrip)                 \
  USE(TIFFReadEncodedTile)                  \
  USE(TIFFScanlineSize64)                   \
  USE(TIFFSetField)                         \
  USE(TIFFSetSubDirectory)                  \
  USE(TIFFTileRowSize64)                    \
  USE(TIFFTileSize64)
#define ML_DECLARE(name) decltype(&::name) name = nullptr;
#define ML_FIND(name)                                                \
  name = reinterpret_cast<decltype(&::name)>(dlsym(handle_, #name)); \
  if (name == nullptr) throw LibraryError(messages::kTiffLibrary, #name);

/// Loaded when the first picture is turned: with all its codecs it would cost every start of the program.
struct Library {
  ML_TIFF_FUNCTIONS(ML_DECLARE)

  Library() : handle_(dlopen(kLibraryFile, RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) throw LibraryError(messages::kTiffLibrary, dlerror());
    ML_TIFF_FUNCTIONS(ML_FIND)
  }

 private:
  void* handle_;
};

#undef ML_DECLARE
#undef ML_FIND
#undef ML_TIFF_FUNCTIONS

const Library& Tiff() {
  static const Library library;
  return library;
}

/// What the library reads through.
struct Stream {
  const metadata::ByteSource& source;
  std::uint64_t position = 0;
};

tmsize_t ReadStream(thandle_t handle, void* buffer, tmsize_t size) {
  auto& stream = *static_cast<Stream*>(handle);
  try {
    const std::span<std::byte> out(static_cast<std::byte*>(buffer), static_cast<std::size_t>(size));
    const auto read = stream.source.ReadSome(stream.position, out);
    stream.position += read;
    return static_cast<tmsize_t>(read);
  } catch (const platform::UserError&) {
    return -1;  // no exception passes through the library; it reports a failed read
  }
}
tmsize_t WriteNothing(thandle_t, void*, tmsize_t) { return -1; }
toff_t SeekStream(thandle_t handle, toff_t offset, int whence) {
  auto& stream = *static_cast<Stream*>(handle);
  if (whence == SEEK_CUR) offset += stream.position;
  if (whence == SEEK_END) offset += stream.source.Size();
  return stream.position = offset;
}
int CloseStream(thandle_t) { return 0; }
toff_t SizeOfStream(thandle_t handle) { return static_cast<Stream*>(handle)->source.Size(); }

struct Failure {
  std::string reason, description;
};

int KeepError(TIFF*, void* data, const char* module, const char* format, va_list values) {
  auto& failure = *static_cast<Failure*>(data);
  std::array<char, 512> text{};
  std::vsnprintf(text.data(), text.size(), format, values);
  if (failure.description.empty()) failure = {module != nullptr ? module : "TIFF", text.data()};
  return 1;
}
int IgnoreWarning(TIFF*, void*, const char*, const char*, va_list) { return 1; }

}  // namespace

struct TiffReader::State {
  explicit State(const metadata::ByteSource& source) : stream{source} {}
  ~State() {
    if (tiff != nullptr) Tiff().TIFFClose(tiff);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  [[noreturn]] void Throw() const {
    if (failure.description.empty()) throw LibraryError(messages::kTiffInvalid, messages::kTiffCut);
    throw LibraryError(failure.reason, failure.description);
  }
  std::uint32_t Field(std::uint32_t tag) const {
    std::uint16_t value = 0;
    Tiff().TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
  }
  std::uint32_t LongField(std::uint32_t tag) const {
    std::uint32_t value = 0;
    Tiff().TIFFGetField(tiff, tag, &value);
    return value;
  }

  std::uint32_t ChooseColours(std::uint32_t photometric) const;
  void ReadStrips(TiffSamples& samples);
  void ReadTiles(TiffSamples& samples);
  /// A rectangle of the picture, in pixels.
  struct Part {
    std::uint32_t x, y, columns, rows;
    std::uint32_t plane;  ///< the sample that it has, where planes are apart
  };
  void Place(const std::vector<std::byte>& block, std::size_t blockRow, const Part& part, TiffSamples& samples) const;

  Stream stream;
  Failure failure;
  TIFF* tiff = nullptr;
  bool planes = false;  ///< each sample stands in strips or tiles of its own
};

TiffReader::TiffReader(const metadata::ByteSource& source) : state_(std::make_unique<State>(source)) {
  const auto& library = Tiff();
  const std::unique_ptr<TIFFOpenOptions, decltype(&::TIFFOpenOptionsFree)> options(library.TIFFOpenOptionsAlloc(),
                                                                                   library.TIFFOpenOptionsFree);
  library.TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(kMaxBytes));
  library.TIFFOpenOptionsSetErrorHandlerExtR(options.get(), KeepError, &state_->failure);
  library.TIFFOpenOptionsSetWarningHandlerExtR(options.get(), IgnoreWarning, nullptr);
  // "h": the first directory is not read before it is asked for; "m": never mapped.
  state_->tiff = library.TIFFClientOpenExt("TIFF", "rhm", &state_->stream, ReadStream, WriteNothing, SeekStream,
                                           CloseStream, SizeOfStream, nullptr, nullptr, options.get());
  if (state_->tiff == nullptr) state_->Throw();
}

TiffReader::~TiffReader() = default;

/// What the samples will mean. Throws LibraryError for those that would not be samples of pixels.
std::uint32_t TiffReader::State::ChooseColours(std::uint32_t photometric) const {
  const auto compression = Field(TIFFTAG_COMPRESSION);
  if (photometric == PHOTOMETRIC_YCBCR && compression == COMPRESSION_JPEG) {
    Tiff().TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    return PHOTOMETRIC_RGB;
  }
  if (photometric == PHOTOMETRIC_LOGL || photometric == PHOTOMETRIC_LOGLUV || compression == COMPRESSION_OJPEG) {
    throw LibraryError(messages::kTiffInvalid, messages::kTiffNotTurned);
  }
  if (photometric == PHOTOMETRIC_YCBCR) {
    std::uint16_t across = 0, down = 0;
    Tiff().TIFFGetFieldDefaulted(tiff, TIFFTAG_YCBCRSUBSAMPLING, &across, &down);
    if (across != 1 || down != 1) throw LibraryError(messages::kTiffInvalid, messages::kTiffNotTurned);
  }
  return photometric;
}

/// Puts a part of the picture at its place: all samples of its pixels, or those of one plane.
void TiffReader::State::Place(const std::vector<std::byte>& block, std::size_t blockRow, const Part& part,
                              TiffSamples& samples) const {
  const auto pixelBits = samples.BitsPerPixel();
  for (std::uint32_t row = 0; row < part.rows; ++row) {
    const auto* from = block.data() + row * blockRow;
    auto* to = samples.data.data() + (part.y + row) * samples.RowBytes() + part.x * pixelBits / 8;
    if (!planes) {
      std::memcpy(to, from, (part.columns * pixelBits + 7) / 8);
      continue;
    }
    const std::size_t size = samples.bitsPerSample / 8, step = pixelBits / 8;
    to += part.plane * size;
    for (std::uint32_t column = 0; column < part.columns; ++column, from += size, to += step)
      std::memcpy(to, from, size);
  }
}

void TiffReader::State::ReadStrips(TiffSamples& samples) {
  const auto rowBytes = static_cast<std::size_t>(Tiff().TIFFScanlineSize64(tiff));
  std::uint32_t rowsPerStrip = 0;
  Tiff().TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &rowsPerStrip);
  rowsPerStrip = std::min(rowsPerStrip, samples.height);
  const auto expected = planes ? (samples.width * std::size_t{samples.bitsPerSample} + 7) / 8 : samples.RowBytes();
  if (rowsPerStrip == 0 || rowBytes != expected) Throw();
  std::vector<std::byte> strip(rowBytes * rowsPerStrip);
  std::uint32_t index = 0;
  for (std::uint32_t plane = 0; plane < (planes ? samples.samplesPerPixel : 1); ++plane) {
    for (std::uint32_t y = 0; y < samples.height; y += rowsPerStrip, ++index) {
      const auto rows = std::min(rowsPerStrip, samples.height - y);
      const auto size = static_cast<tmsize_t>(rowBytes * rows);
      if (Tiff().TIFFReadEncodedStrip(tiff, index, strip.data(), size) != size) Throw();
      Place(strip, rowBytes, {0, y, samples.width, rows, plane}, samples);
    }
  }
}

void TiffReader::State::ReadTiles(TiffSamples& samples) {
  const auto width = LongField(TIFFTAG_TILEWIDTH), height = LongField(TIFFTAG_TILELENGTH);
  const auto rowBytes = static_cast<std::size_t>(Tiff().TIFFTileRowSize64(tiff));
  const auto size = static_cast<std::size_t>(Tiff().TIFFTileSize64(tiff));
  const auto pixelBits = planes ? samples.bitsPerSample : samples.BitsPerPixel();
  const bool sound = width > 0 && height > 0 && size <= kMaxBytes && width * pixelBits % 8 == 0 &&
                     rowBytes == width * pixelBits / 8 && size == rowBytes * height;
  if (!sound) Throw();
  std::vector<std::byte> tile(size);
  std::uint32_t index = 0;
  for (std::uint32_t plane = 0; plane < (planes ? samples.samplesPerPixel : 1); ++plane) {
    for (std::uint32_t y = 0; y < samples.height; y += std::min(height, samples.height - y)) {
      for (std::uint32_t x = 0; x < samples.width; x += std::min(width, samples.width - x), ++index) {
        if (Tiff().TIFFReadEncodedTile(tiff, index, tile.data(), static_cast<tmsize_t>(size)) !=
            static_cast<tmsize_t>(size)) {
          Throw();
        }
        const Part part{x, y, std::min(width, samples.width - x), std::min(height, samples.height - y), plane};
        Place(tile, rowBytes, part, samples);
      }
    }
  }
}

TiffPicture TiffReader::Read(std::uint32_t offset) {
  auto& state = *state_;
  if (Tiff().TIFFSetSubDirectory(state.tiff, offset) == 0) state.Throw();
  TiffPicture picture;
  auto& samples = picture.samples;
  samples.width = state.LongField(TIFFTAG_IMAGEWIDTH);
  samples.height = state.LongField(TIFFTAG_IMAGELENGTH);
  CheckPixelCount(samples.width, samples.height, kMaxPixelsWhole);
  samples.samplesPerPixel = state.Field(TIFFTAG_SAMPLESPERPIXEL);
  samples.bitsPerSample = state.Field(TIFFTAG_BITSPERSAMPLE);
  constexpr std::uint32_t depths[] = {1, 2, 4, 8, 16, 32, 64};
  state.planes = samples.samplesPerPixel > 1 && state.Field(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
  const bool knownDepth = std::ranges::find(depths, samples.bitsPerSample) != std::end(depths) &&
                          !(state.planes && samples.bitsPerSample < 8);
  if (!knownDepth) throw LibraryError(messages::kTiffInvalid, messages::kTiffBits);
  const bool knownSize =
      samples.samplesPerPixel > 0 && samples.samplesPerPixel <= kMaxSamples &&
      samples.RowBytes() <= kMaxBytes / samples.height &&
      (samples.bitsPerSample < 8 || samples.RowBytes() * samples.height / kMaxRatio <= state.stream.source.Size());
  if (!knownSize) throw LibraryError(messages::kTiffInvalid, messages::kTiffSize);
  picture.photometric = static_cast<std::uint16_t>(state.ChooseColours(state.Field(TIFFTAG_PHOTOMETRIC)));
  samples.data.resize(samples.RowBytes() * samples.height);
  Tiff().TIFFIsTiled(state.tiff) != 0 ? state.ReadTiles(samples) : state.ReadStrips(samples);
  return picture;
}

}  // namespace ml::imaging
