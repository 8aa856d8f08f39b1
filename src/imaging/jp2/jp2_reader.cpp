#include "imaging/jp2/jp2_reader.h"

#include <openjpeg.h>

#include <algorithm>
#include <string>

#include "imaging/held_exception.h"
#include "imaging/jp2/jp2_cost.h"
#include "imaging/messages.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr OPJ_UINT32 kMaxBits = 31;
constexpr int kMaxThreads = 16;

// The library's codec and stream are of one type.
struct CodecRelease {
  void operator()(opj_codec_t* codec) const { opj_destroy_codec(codec); }
};
struct StreamRelease {
  void operator()(opj_stream_t* stream) const { opj_stream_destroy(stream); }
};
struct ImageRelease {
  void operator()(opj_image_t* image) const { opj_image_destroy(image); }
};
struct InfoRelease {
  void operator()(opj_codestream_info_v2_t* info) const { opj_destroy_cstr_info(&info); }
};

}  // namespace

/// The library keeps pointers into it.
struct Jp2Reader::State {
  State(const metadata::ByteSource& byteSource, std::uint64_t offset)
      : source(byteSource), start(offset), position(offset) {}

  const metadata::ByteSource& source;
  std::uint64_t start;
  std::uint64_t position;
  HeldException held;
  std::string reason;  ///< the library's first error
  int warnings = 0;
  bool decoded = false;
  std::unique_ptr<opj_codec_t, CodecRelease> codec;
  std::unique_ptr<opj_stream_t, StreamRelease> stream;
  std::unique_ptr<opj_image_t, ImageRelease> image;

  [[noreturn]] void Fail() const {
    held.Rethrow();
    throw platform::LibraryError(reason.empty() ? messages::kUndecodable : reason, "");
  }

  OPJ_SIZE_T Read(void* buffer, OPJ_SIZE_T length) noexcept {
    std::size_t count = 0;
    held.Does([&] { count = source.ReadSome(position, {static_cast<std::byte*>(buffer), length}); });
    position += count;
    return count > 0 ? count : static_cast<OPJ_SIZE_T>(-1);
  }
  bool MoveTo(std::uint64_t target) noexcept {
    if (target < start || target > source.Size()) return false;
    position = target;
    return true;
  }
  void KeepReason(const char* message) noexcept {
    held.Does([&] {
      if (reason.empty()) reason = message;
      while (!reason.empty() && reason.back() == '\n') reason.pop_back();
    });
  }

  void OpenStream() {
    stream.reset(opj_stream_default_create(OPJ_TRUE));
    if (stream == nullptr) Fail();
    opj_stream_set_user_data(stream.get(), this, nullptr);
    opj_stream_set_user_data_length(stream.get(), source.Size() - std::min(start, source.Size()));
    opj_stream_set_read_function(stream.get(), [](void* buffer, OPJ_SIZE_T length, void* state) {
      return static_cast<State*>(state)->Read(buffer, length);
    });
    opj_stream_set_skip_function(stream.get(), [](OPJ_OFF_T count, void* data) -> OPJ_OFF_T {
      auto& state = *static_cast<State*>(data);
      return state.MoveTo(state.position + static_cast<std::uint64_t>(count)) ? count : -1;
    });
    opj_stream_set_seek_function(stream.get(), [](OPJ_OFF_T target, void* data) -> OPJ_BOOL {
      auto& state = *static_cast<State*>(data);
      return state.MoveTo(state.start + static_cast<std::uint64_t>(target)) ? OPJ_TRUE : OPJ_FALSE;
    });
  }

  void OpenCodec(Content content, int threads) {
    codec.reset(opj_create_decompress(content == Content::BoxedFile ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K));
    if (codec == nullptr) Fail();
    opj_set_error_handler(
        codec.get(), [](const char* message, void* state) { static_cast<State*>(state)->KeepReason(message); }, this);
    opj_set_warning_handler(
        codec.get(), [](const char*, void* state) { ++static_cast<State*>(state)->warnings; }, this);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (opj_setup_decoder(codec.get(), &parameters) == OPJ_FALSE) Fail();
    if (threads > 1) opj_codec_set_threads(codec.get(), std::min(threads, kMaxThreads));
  }

  /// The library asserts part of this while it decodes.
  void CheckComponents() const {
    if (image->numcomps == 0 || image->x1 <= image->x0 || image->y1 <= image->y0) Refuse(messages::kNoPixels);
    for (const auto& component : std::span(image->comps, image->numcomps)) {
      const bool sane = component.dx > 0 && component.dy > 0 && component.w > 0 && component.h > 0 &&
                        component.prec > 0 && component.prec <= kMaxBits;
      if (!sane) Refuse("A component of the picture makes no sense");
    }
  }
};

Jp2Reader::Jp2Reader(const metadata::ByteSource& source, std::uint64_t offset, Content content, int threads)
    : state_(std::make_unique<State>(source, offset)) {
  auto& state = *state_;
  state.OpenStream();
  state.OpenCodec(content, threads);
  opj_image_t* image = nullptr;
  const bool read = opj_read_header(state.stream.get(), state.codec.get(), &image) != OPJ_FALSE;
  state.image.reset(image);
  if (!read || image == nullptr) state.Fail();
  state.CheckComponents();
}

Jp2Reader::~Jp2Reader() = default;

PictureSize Jp2Reader::FullSize() const {
  const auto& image = *state_->image;
  long long width = 0, height = 0;
  for (const auto& component : std::span(image.comps, image.numcomps)) {
    width = std::max<long long>(width, component.w);
    height = std::max<long long>(height, component.h);
  }
  CheckPixelCount(width, height, kMaxPixelsScaled);
  return {static_cast<int>(width), static_cast<int>(height)};
}

namespace {

std::unique_ptr<opj_codestream_info_v2_t, InfoRelease> CodeStreamInfo(opj_codec_t* codec) {
  std::unique_ptr<opj_codestream_info_v2_t, InfoRelease> info(opj_get_cstr_info(codec));
  if (info == nullptr || info->m_default_tile_info.tccp_info == nullptr) Refuse("The code stream has no header");
  return info;
}

}  // namespace

int Jp2Reader::MaxHalvings() const {
  const auto info = CodeStreamInfo(state_->codec.get());
  OPJ_UINT32 least = OPJ_J2K_MAXRLVLS;
  for (OPJ_UINT32 i = 0; i < state_->image->numcomps; ++i) {
    least = std::min(least, info->m_default_tile_info.tccp_info[i].numresolutions);
  }
  return static_cast<int>(std::max<OPJ_UINT32>(least, 1)) - 1;
}

void Jp2Reader::CheckSize(int halvings) const {
  const auto& image = *state_->image;
  long long samples = 0;
  for (const auto& component : std::span(image.comps, image.numcomps)) {
    samples += (static_cast<long long>(component.w) >> halvings) * (static_cast<long long>(component.h) >> halvings);
    if (samples > kMaxJp2Samples) Refuse(messages::kPictureTooLarge);
  }
}

void Jp2Reader::Decode(int halvings) {
  auto& state = *state_;
  CheckSize(halvings);
  auto* codec = state.codec.get();
  if (opj_set_decoded_resolution_factor(codec, static_cast<OPJ_UINT32>(halvings)) == OPJ_FALSE) state.Fail();
  if (opj_decode(codec, state.stream.get(), state.image.get()) == OPJ_FALSE) state.Fail();
  state.held.Rethrow();
  state.CheckComponents();
  for (const auto& component : std::span(state.image->comps, state.image->numcomps)) {
    if (component.data == nullptr) Refuse("A component of the picture is missing");
  }
}

Jp2Colours Jp2Reader::Colours() const {
  switch (state_->image->color_space) {
    case OPJ_CLRSPC_SRGB:
      return Jp2Colours::Rgb;
    case OPJ_CLRSPC_GRAY:
      return Jp2Colours::Grey;
    case OPJ_CLRSPC_SYCC:
    case OPJ_CLRSPC_EYCC:
      return Jp2Colours::Ycc;
    case OPJ_CLRSPC_CMYK:
      return Jp2Colours::Cmyk;
    case OPJ_CLRSPC_UNKNOWN:
    case OPJ_CLRSPC_UNSPECIFIED:
      break;
  }
  return Jp2Colours::Unknown;
}

std::vector<Jp2Component> Jp2Reader::Components() const {
  std::vector<Jp2Component> components;
  for (const auto& component : std::span(state_->image->comps, state_->image->numcomps)) {
    components.push_back({.width = static_cast<int>(component.w),
                          .height = static_cast<int>(component.h),
                          .bits = static_cast<int>(component.prec),
                          .isSigned = component.sgnd != 0,
                          .opacity = component.alpha == 1,
                          .samples = component.data});
  }
  return components;
}

bool Jp2Reader::Damaged() const { return state_->warnings > 0 || !state_->reason.empty(); }

}  // namespace ml::imaging
