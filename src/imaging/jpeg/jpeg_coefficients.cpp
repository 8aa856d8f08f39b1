#include "imaging/jpeg/jpeg_coefficients.h"

#include <cstdio>
// These need the line above.
#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdlib>
#include <memory>
#include <utility>

#include "imaging/decoded_picture.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr int kMaxScans = 500;
constexpr int kSide = DCTSIZE;
constexpr int kMaxParts = MAX_COMPONENTS;

struct State {
  jpeg_decompress_struct in{};
  jpeg_compress_struct out{};
  jpeg_error_mgr errors{};
  jpeg_progress_mgr progress{};
  std::jmp_buf jump{};
  std::array<char, JMSG_LENGTH_MAX> reason{};
  std::array<jvirt_barray_ptr, kMaxParts> moved{};
  unsigned char* buffer = nullptr;
  unsigned long size = 0;
};

/// How the transform is put together: first the diagonal, then mirrors in the new picture.
struct Steps {
  bool transpose = false, mirrorX = false, mirrorY = false;
};

Steps StepsOf(JpegTransform transform) {
  switch (transform) {
    case JpegTransform::FlipHorizontal:
      return {.mirrorX = true};
    case JpegTransform::FlipVertical:
      return {.mirrorY = true};
    case JpegTransform::Transpose:
      return {.transpose = true};
    case JpegTransform::Transverse:
      return {.transpose = true, .mirrorX = true, .mirrorY = true};
    case JpegTransform::cw90:
      return {.transpose = true, .mirrorX = true};
    case JpegTransform::half:
      return {.mirrorX = true, .mirrorY = true};
    case JpegTransform::cw270:
      return {.transpose = true, .mirrorY = true};
    default:
      return {};
  }
}

void OnError(j_common_ptr info) {
  auto& state = *static_cast<State*>(info->client_data);
  info->err->format_message(info, state.reason.data());
  std::longjmp(state.jump, 1);
}

/// Damage must not be made lasting; stray bytes between markers and odd orders of scans cost no pixel.
void OnMessage(j_common_ptr info, int level) {
  const int code = info->err->msg_code;
  const bool harmless = code == JWRN_EXTRANEOUS_DATA || code == JWRN_BOGUS_PROGRESSION || code == JWRN_ADOBE_XFORM ||
                        code == JWRN_JFIF_MAJOR;
  if (level < 0 && !harmless) OnError(info);
}

void OnProgress(j_common_ptr info) {
  const auto& state = *static_cast<State*>(info->client_data);
  if (state.in.input_scan_number > kMaxScans) ERREXIT(info, JERR_BAD_PROGRESSION);
}

/// Whole units of the picture along a side, in blocks of this part; what the edge cuts is not mirrored.
JDIMENSION WholeBlocks(JDIMENSION side, int maxFactor, int factor) {
  return side / static_cast<JDIMENSION>(maxFactor * kSide) * static_cast<JDIMENSION>(factor);
}
JDIMENSION AllBlocks(JDIMENSION side, int maxFactor, int factor) {
  const auto unit = static_cast<JDIMENSION>(maxFactor * kSide);
  return (side + unit - 1) / unit * static_cast<JDIMENSION>(factor);
}

struct Grid {
  JDIMENSION width = 0, height = 0;            ///< blocks of the new part
  JDIMENSION wholeWidth = 0, wholeHeight = 0;  ///< of these, those that are mirrored
};

// The library leaves the functions from here to Run by a jump, so that nothing in them may need a destructor.

void MoveBlock(const JCOEF* from, JCOEF* to, bool transpose, bool mirrorX, bool mirrorY) {
  for (int v = 0; v < kSide; ++v) {
    for (int u = 0; u < kSide; ++u) {
      const auto value = transpose ? from[u * kSide + v] : from[v * kSide + u];
      const bool negative = (mirrorX && u % 2 != 0) != (mirrorY && v % 2 != 0);
      to[v * kSide + u] = static_cast<JCOEF>(negative ? -value : value);
    }
  }
}

void MovePart(State& state, jvirt_barray_ptr from, jvirt_barray_ptr to, const Grid& grid, const Steps& steps) {
  const auto common = reinterpret_cast<j_common_ptr>(&state.in);
  const auto access = state.in.mem->access_virt_barray;
  for (JDIMENSION y = 0; y < grid.height; ++y) {
    const auto row = access(common, to, y, 1, TRUE)[0];
    const bool flipY = steps.mirrorY && y < grid.wholeHeight;
    const auto oldY = flipY ? grid.wholeHeight - 1 - y : y;
    for (JDIMENSION x = 0; x < grid.width; ++x) {
      const bool flipX = steps.mirrorX && x < grid.wholeWidth;
      const auto oldX = flipX ? grid.wholeWidth - 1 - x : x;
      const auto old = access(common, from, steps.transpose ? oldX : oldY, 1, FALSE)[0];
      MoveBlock(old[steps.transpose ? oldY : oldX], row[x], steps.transpose, flipX, flipY);
    }
  }
}

void TransposeTables(jpeg_compress_struct& out) {
  for (auto* table : out.quant_tbl_ptrs) {
    if (table == nullptr) continue;
    for (int v = 0; v < kSide; ++v) {
      for (int u = 0; u < v; ++u) std::swap(table->quantval[v * kSide + u], table->quantval[u * kSide + v]);
    }
  }
}

/// The new picture's frame and the places for its blocks, which must be asked for before the old ones are read.
void Prepare(State& state, const Steps& steps, Grid* grids) {
  auto& in = state.in;
  const auto width = steps.transpose ? in.image_height : in.image_width;
  const auto height = steps.transpose ? in.image_width : in.image_height;
  int maxAcross = 1, maxDown = 1;
  for (int i = 0; i < in.num_components; ++i) {
    maxAcross = std::max(maxAcross, in.comp_info[i].h_samp_factor);
    maxDown = std::max(maxDown, in.comp_info[i].v_samp_factor);
  }
  if (steps.transpose) std::swap(maxAcross, maxDown);
  for (int i = 0; i < in.num_components; ++i) {
    int across = in.comp_info[i].h_samp_factor, down = in.comp_info[i].v_samp_factor;
    if (steps.transpose) std::swap(across, down);
    grids[i] = {AllBlocks(width, maxAcross, across), AllBlocks(height, maxDown, down),
                WholeBlocks(width, maxAcross, across), WholeBlocks(height, maxDown, down)};
    state.moved[static_cast<std::size_t>(i)] =
        in.mem->request_virt_barray(reinterpret_cast<j_common_ptr>(&in), JPOOL_IMAGE, FALSE, grids[i].width,
                                    grids[i].height, static_cast<JDIMENSION>(down));
  }
}

void SetFrame(State& state, const Steps& steps) {
  auto& out = state.out;
  jpeg_copy_critical_parameters(&state.in, &out);
  if (state.in.progressive_mode != 0) jpeg_simple_progression(&out);
  if (!steps.transpose) return;
  std::swap(out.image_width, out.image_height);
  for (int i = 0; i < out.num_components; ++i) {
    std::swap(out.comp_info[i].h_samp_factor, out.comp_info[i].v_samp_factor);
  }
  TransposeTables(out);
}

bool ReadHeader(State& state, std::span<const std::byte> jpeg) {
  state.in.err = state.out.err = jpeg_std_error(&state.errors);
  state.errors.error_exit = OnError;
  state.errors.emit_message = OnMessage;
  state.in.client_data = state.out.client_data = &state;
  if (setjmp(state.jump) != 0) return false;
  jpeg_create_decompress(&state.in);
  jpeg_create_compress(&state.out);
  state.progress.progress_monitor = OnProgress;
  state.in.progress = &state.progress;
  jpeg_mem_src(&state.in, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
  jpeg_read_header(&state.in, TRUE);
  return true;
}

bool Run(State& state, const Steps& steps) {
  std::array<Grid, kMaxParts> grids{};
  if (setjmp(state.jump) != 0) return false;
  Prepare(state, steps, grids.data());
  const auto old = jpeg_read_coefficients(&state.in);
  SetFrame(state, steps);
  for (int i = 0; i < state.in.num_components; ++i) {
    const auto part = static_cast<std::size_t>(i);
    MovePart(state, old[i], state.moved[part], grids[part], steps);
  }
  jpeg_mem_dest(&state.out, &state.buffer, &state.size);
  jpeg_write_coefficients(&state.out, state.moved.data());
  jpeg_finish_compress(&state.out);
  jpeg_finish_decompress(&state.in);
  return true;
}

struct Release {
  void operator()(State* state) const {
    jpeg_destroy_compress(&state->out);
    jpeg_destroy_decompress(&state->in);
    std::free(state->buffer);
    delete state;
  }
};

}  // namespace

std::vector<std::byte> TransformCoefficients(std::span<const std::byte> jpeg, JpegTransform transform) {
  const std::unique_ptr<State, Release> state(new State);
  if (!ReadHeader(*state, jpeg)) throw platform::LibraryError(state->reason.data(), "");
  CheckPixelCount(state->in.image_width, state->in.image_height, kMaxPixelsWhole);
  if (!Run(*state, StepsOf(transform))) throw platform::LibraryError(state->reason.data(), "");
  const auto whole = std::as_bytes(std::span(state->buffer, state->size));
  return {whole.begin(), whole.end()};
}

}  // namespace ml::imaging
