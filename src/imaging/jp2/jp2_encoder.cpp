#include "imaging/jp2/jp2_encoder.h"

#include <openjpeg.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "imaging/writers/messages.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

struct CodecRelease {
  void operator()(opj_codec_t* codec) const { opj_destroy_codec(codec); }
};
struct StreamRelease {
  void operator()(opj_stream_t* stream) const { opj_stream_destroy(stream); }
};
struct ImageRelease {
  void operator()(opj_image_t* image) const { opj_image_destroy(image); }
};
using Codec = std::unique_ptr<opj_codec_t, CodecRelease>;
using Stream = std::unique_ptr<opj_stream_t, StreamRelease>;
using Image = std::unique_ptr<opj_image_t, ImageRelease>;

constexpr OPJ_SIZE_T kFailed = static_cast<OPJ_SIZE_T>(-1);
constexpr std::size_t kBuffer = std::size_t{1} << 20;
/// In work for a part of a second, in which nobody can cancel; large enough that no edge shows.
constexpr int kTileSide = 1024;

/// What the library writes. It may go back to a place that it has written.
struct Output {
  std::vector<std::byte> bytes;
  std::size_t position = 0;

  bool Write(const void* data, std::size_t count) noexcept {
    try {
      if (position + count > bytes.size()) bytes.resize(position + count);
    } catch (const std::bad_alloc&) {
      return false;
    }
    std::memcpy(bytes.data() + position, data, count);
    position += count;
    return true;
  }
};

OPJ_SIZE_T OnWrite(void* data, OPJ_SIZE_T count, void* output) {
  return static_cast<Output*>(output)->Write(data, count) ? count : kFailed;
}
OPJ_OFF_T OnSkip(OPJ_OFF_T count, void* output) {
  static_cast<Output*>(output)->position += static_cast<std::size_t>(count);
  return count;
}
OPJ_BOOL OnSeek(OPJ_OFF_T position, void* output) {
  static_cast<Output*>(output)->position = static_cast<std::size_t>(position);
  return OPJ_TRUE;
}

Image MakeImage(const PixelRows& pixels) {
  opj_image_cmptparm_t parameter{};
  parameter.dx = parameter.dy = 1;
  parameter.w = static_cast<OPJ_UINT32>(pixels.width);
  parameter.h = static_cast<OPJ_UINT32>(pixels.height);
  parameter.prec = static_cast<OPJ_UINT32>(pixels.bytesPerSample * 8);
  std::array<opj_image_cmptparm_t, 3> parameters{parameter, parameter, parameter};
  const auto space = pixels.channels == 3 ? OPJ_CLRSPC_SRGB : OPJ_CLRSPC_GRAY;
  Image image(opj_image_tile_create(static_cast<OPJ_UINT32>(pixels.channels), parameters.data(), space));
  if (!image) throw platform::LibraryError(messages::kJp2Image, "");
  image->x1 = parameter.w;
  image->y1 = parameter.h;
  return image;
}

/// One tile of the picture: the samples of each component together, as the library takes them.
struct Tile {
  int x = 0, y = 0, width = 0, height = 0;
};

template <class Sample>
void AppendComponent(std::vector<std::byte>& out, const PixelRows& pixels, const Tile& tile, std::size_t channel) {
  const auto channels = static_cast<std::size_t>(pixels.channels);
  const auto start = out.size();
  out.resize(start + static_cast<std::size_t>(tile.width) * static_cast<std::size_t>(tile.height) * sizeof(Sample));
  auto* to = out.data() + start;
  for (int y = tile.y; y < tile.y + tile.height; ++y) {
    const auto* from = pixels.Row(y) + (static_cast<std::size_t>(tile.x) * channels + channel) * sizeof(Sample);
    for (int x = 0; x < tile.width; ++x, from += channels * sizeof(Sample), to += sizeof(Sample)) {
      std::memcpy(to, from, sizeof(Sample));
    }
  }
}

void TakeSamples(std::vector<std::byte>& out, const PixelRows& pixels, const Tile& tile) {
  out.clear();
  const auto channels = static_cast<std::size_t>(pixels.channels);
  for (std::size_t i = 0; i < channels; ++i) {
    const auto channel = pixels.order == PixelOrder::Bgr ? channels - 1 - i : i;
    pixels.bytesPerSample == 1 ? AppendComponent<std::uint8_t>(out, pixels, tile, channel)
                               : AppendComponent<std::uint16_t>(out, pixels, tile, channel);
  }
}

int TilesOf(int side) { return (side + kTileSide - 1) / kTileSide; }

/// False if the library gave up.
bool WriteTiles(opj_codec_t* codec, opj_stream_t* stream, const PixelRows& pixels,
                const std::function<void(int done, int all)>& report) {
  const int across = TilesOf(pixels.width), all = across * TilesOf(pixels.height);
  std::vector<std::byte> samples;
  for (int i = 0; i < all; ++i) {
    Tile tile{.x = i % across * kTileSide, .y = i / across * kTileSide};
    tile.width = std::min(kTileSide, pixels.width - tile.x);
    tile.height = std::min(kTileSide, pixels.height - tile.y);
    TakeSamples(samples, pixels, tile);
    if (opj_write_tile(codec, static_cast<OPJ_UINT32>(i), reinterpret_cast<OPJ_BYTE*>(samples.data()),
                       static_cast<OPJ_UINT32>(samples.size()), stream) == OPJ_FALSE) {
      return false;
    }
    report(i + 1, all);
  }
  return true;
}

opj_cparameters_t ParametersFor(const PixelRows& pixels, double rate) {
  opj_cparameters_t parameters;
  opj_set_default_encoder_parameters(&parameters);
  parameters.tcp_numlayers = 1;
  parameters.tcp_rates[0] = rate < 1 ? static_cast<float>(1 / rate) : 0;
  parameters.cp_disto_alloc = 1;
  parameters.tcp_mct = pixels.channels == 3 ? 1 : 0;
  parameters.tile_size_on = OPJ_TRUE;
  parameters.cp_tdx = std::min(kTileSide, pixels.width);
  parameters.cp_tdy = std::min(kTileSide, pixels.height);
  // A tile that is smaller than its smallest resolution asks for is refused.
  const int shorter = std::min(parameters.cp_tdx, parameters.cp_tdy);
  while (parameters.numresolution > 1 && 1 << (parameters.numresolution - 1) > shorter) --parameters.numresolution;
  return parameters;
}

void KeepReason(const char* text, void* reason) { *static_cast<std::string*>(reason) += text; }

Stream MakeStream(Output& output) {
  Stream stream(opj_stream_create(kBuffer, OPJ_FALSE));
  if (!stream) throw platform::LibraryError(messages::kJp2Encode, "");
  opj_stream_set_user_data(stream.get(), &output, nullptr);
  opj_stream_set_write_function(stream.get(), OnWrite);
  opj_stream_set_skip_function(stream.get(), OnSkip);
  opj_stream_set_seek_function(stream.get(), OnSeek);
  return stream;
}

}  // namespace

double RateOf(int quality) { return quality >= 99 ? 1.0 : std::max(quality, 1) / 100.0; }

std::vector<std::byte> EncodeJp2CodeStream(const PixelRows& pixels, double rate, int threads,
                                           const std::function<void(int done, int all)>& report) {
  const auto image = MakeImage(pixels);
  Output output;
  const auto stream = MakeStream(output);
  const Codec codec(opj_create_compress(OPJ_CODEC_J2K));
  std::string reason;
  opj_set_error_handler(codec.get(), KeepReason, &reason);
  auto parameters = ParametersFor(pixels, rate);
  const bool done = opj_setup_encoder(codec.get(), &parameters, image.get()) != OPJ_FALSE &&
                    (threads < 2 || opj_codec_set_threads(codec.get(), threads) != OPJ_FALSE) &&
                    opj_start_compress(codec.get(), image.get(), stream.get()) != OPJ_FALSE &&
                    WriteTiles(codec.get(), stream.get(), pixels, report) &&
                    opj_end_compress(codec.get(), stream.get()) != OPJ_FALSE;
  while (reason.ends_with('\n')) reason.pop_back();
  if (!done) throw platform::LibraryError(messages::kJp2Encode, reason);
  return std::move(output.bytes);
}

}  // namespace ml::imaging
