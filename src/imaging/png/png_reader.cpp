#include "imaging/png/png_reader.h"

#include <png.h>

#include <array>
#include <csetjmp>
#include <cstring>

#include "imaging/held_exception.h"

namespace ml::imaging {
namespace {

constexpr png_uint_32 kMaxSide = 30'000;
constexpr png_alloc_size_t kMaxChunkMemory = png_alloc_size_t{8} * 1024 * 1024;
constexpr png_uint_32 kMaxCachedChunks = 256;
/// How much of the compressed data is fetched at once. Of a truncated file no more than this is lost.
constexpr std::size_t kDataPiece = 256;

}  // namespace

/// The library keeps pointers into it.
struct PngReader::State {
  explicit State(const metadata::ByteSource& byteSource) : source(byteSource) {}

  const metadata::ByteSource& source;
  std::uint64_t position = 0;
  png_structp png = nullptr;
  png_infop info = nullptr;
  std::jmp_buf jump{};
  std::array<char, 200> reason{};
  HeldException held;
};

namespace {

using State = PngReader::State;

[[noreturn]] void OnError(png_structp png, png_const_charp message) {
  auto& state = *static_cast<State*>(png_get_error_ptr(png));
  std::strncpy(state.reason.data(), message, state.reason.size() - 1);
  std::longjmp(state.jump, 1);
}

void OnWarning(png_structp, png_const_charp) {}

/// 0 where the source throws.
std::size_t ReadBytes(State& state, std::byte* out, std::size_t length) noexcept {
  std::size_t count = 0;
  state.held.Does([&] { count = state.source.ReadSome(state.position, {out, length}); });
  return count;
}

void OnRead(png_structp png, png_bytep out, std::size_t length) {
  auto& state = *static_cast<State*>(png_get_io_ptr(png));
  if (ReadBytes(state, reinterpret_cast<std::byte*>(out), length) != length) png_error(png, "The file ends too early");
  state.position += length;
}

// The library leaves the next four functions by a jump, so that nothing in them may need a destructor.

bool CallReadInfo(State& state) {
  if (setjmp(state.jump) != 0) return false;
  state.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &state, OnError, OnWarning);
  if (state.png == nullptr) return false;
  state.info = png_create_info_struct(state.png);
  if (state.info == nullptr) return false;
  png_set_read_fn(state.png, &state, OnRead);
  png_set_user_limits(state.png, kMaxSide, kMaxSide);
  png_set_chunk_malloc_max(state.png, kMaxChunkMemory);
  png_set_chunk_cache_max(state.png, kMaxCachedChunks);
  png_set_compression_buffer_size(state.png, kDataPiece);
  // Texts, profiles and gamma are nothing to the pixels: transparency is then blended as the samples stand.
  png_set_keep_unknown_chunks(state.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
  png_read_info(state.png, state.info);
  return true;
}

bool CallSetInterlace(State& state, int& passes) {
  if (setjmp(state.jump) != 0) return false;
  passes = png_set_interlace_handling(state.png);
  return true;
}

bool CallStart(State& state) {
  if (setjmp(state.jump) != 0) return false;
  const auto type = png_get_color_type(state.png, state.info);
  const bool wide = png_get_bit_depth(state.png, state.info) == 16;
  png_set_expand(state.png);
  if ((type & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(state.png, state.info, PNG_INFO_tRNS) != 0) {
    const png_uint_16 most = wide ? 0xffff : 0xff;
    const png_color_16 white{0, most, most, most, most};
    png_set_background_fixed(state.png, &white, PNG_BACKGROUND_GAMMA_SCREEN, 0, PNG_FP_1);
  }
  if (wide) png_set_strip_16(state.png);
  if ((type & PNG_COLOR_MASK_COLOR) == 0) png_set_gray_to_rgb(state.png);
  png_read_update_info(state.png, state.info);
  return true;
}

bool CallReadRow(State& state, png_bytep row) {
  if (setjmp(state.jump) != 0) return false;
  png_read_row(state.png, nullptr, row);
  return true;
}

}  // namespace

PngReader::PngReader(const metadata::ByteSource& source) : state_(std::make_unique<State>(source)) {}

PngReader::~PngReader() { png_destroy_read_struct(&state_->png, &state_->info, nullptr); }

bool PngReader::ReadHeader(PngHeader& header) {
  if (!CallReadInfo(*state_) || !CallSetInterlace(*state_, header.passes)) return false;
  header.width = static_cast<int>(png_get_image_width(state_->png, state_->info));
  header.height = static_cast<int>(png_get_image_height(state_->png, state_->info));
  return true;
}

bool PngReader::Start() { return CallStart(*state_); }

std::size_t PngReader::RowBytes() const { return png_get_rowbytes(state_->png, state_->info); }

bool PngReader::ReadRow(std::byte* row) { return CallReadRow(*state_, reinterpret_cast<png_bytep>(row)); }

const char* PngReader::Reason() const {
  state_->held.Rethrow();
  return state_->reason.data();
}

}  // namespace ml::imaging
