#include "imaging/jpeg/jpeg_reader.h"

#include <cstdio>
// These need the line above.
#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstring>
#include <vector>

#include "imaging/held_exception.h"

namespace ml::imaging {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
constexpr long kMaxMemory = 768L * 1024 * 1024;
/// A progressive picture is gone through once a scan. Cameras and editors write about ten scans.
constexpr int kMaxScans = 200;
constexpr long long kMaxScannedPixels = 4'000'000'000;

constexpr JOCTET kEndOfImage[] = {0xff, JPEG_EOI};

}  // namespace

/// The library keeps pointers into it.
struct JpegReader::State {
  explicit State(const metadata::ByteSource& byteSource, std::uint64_t offset)
      : source(byteSource), start(offset), position(offset), buffer(kBufferSize) {}

  jpeg_decompress_struct info{};
  jpeg_error_mgr errors{};
  jpeg_progress_mgr progress{};
  jpeg_source_mgr input{};
  std::jmp_buf jump{};
  std::array<char, JMSG_LENGTH_MAX> reason{};
  const metadata::ByteSource& source;
  std::uint64_t start;
  std::uint64_t position;
  std::vector<std::byte> buffer;
  HeldException held;
  bool atEnd = false;
  int dataWarnings = 0;
};

namespace {

using State = JpegReader::State;

template <class Info>
State& StateOf(Info* info) {
  return *static_cast<State*>(info->client_data);
}

void OnError(j_common_ptr info) {
  auto& state = StateOf(info);
  info->err->format_message(info, state.reason.data());
  std::longjmp(state.jump, 1);
}

void OnMessage(j_common_ptr info, int level) {
  if (level >= 0) return;  // a trace
  ++info->err->num_warnings;
  // Stray bytes between markers and odd orders of scans cost no pixel.
  const int code = info->err->msg_code;
  if (code != JWRN_EXTRANEOUS_DATA && code != JWRN_BOGUS_PROGRESSION && code != JWRN_ADOBE_XFORM &&
      code != JWRN_JFIF_MAJOR) {
    ++StateOf(info).dataWarnings;
  }
}

void OnProgress(j_common_ptr info) {
  auto& state = StateOf(info);
  const auto& frame = state.info;
  const auto scanned = static_cast<long long>(frame.image_width) * frame.image_height * frame.input_scan_number;
  if (frame.input_scan_number <= kMaxScans && scanned <= kMaxScannedPixels) return;
  std::strncpy(state.reason.data(), "The picture has too many scans", state.reason.size() - 1);
  std::longjmp(state.jump, 1);
}

/// 0 where the source throws.
std::size_t ReadBuffer(State& state) noexcept {
  std::size_t count = 0;
  state.held.Does([&] { count = state.source.ReadSome(state.position, state.buffer); });
  return count;
}

boolean Fill(j_decompress_ptr info) {
  auto& state = StateOf(info);
  const auto count = ReadBuffer(state);
  state.position += count;
  state.input.next_input_byte = reinterpret_cast<const JOCTET*>(state.buffer.data());
  state.input.bytes_in_buffer = count;
  if (count > 0) return TRUE;
  if (state.position == state.start) ERREXIT(info, JERR_INPUT_EMPTY);
  state.atEnd = true;
  state.input.next_input_byte = kEndOfImage;
  state.input.bytes_in_buffer = std::size(kEndOfImage);
  return TRUE;
}

void Skip(j_decompress_ptr info, long count) {
  if (count <= 0) return;
  auto& state = StateOf(info);
  const auto inBuffer = std::min(static_cast<std::size_t>(count), state.input.bytes_in_buffer);
  state.input.next_input_byte += inBuffer;
  state.input.bytes_in_buffer -= inBuffer;
  state.position += static_cast<std::size_t>(count) - inBuffer;
}

// The library leaves the next four functions by a jump, so that nothing in them may need a destructor.

bool Create(State& state) {
  state.info.err = jpeg_std_error(&state.errors);
  state.errors.error_exit = OnError;
  state.errors.emit_message = OnMessage;
  state.info.client_data = &state;
  if (setjmp(state.jump) != 0) return false;
  jpeg_create_decompress(&state.info);
  state.info.mem->max_memory_to_use = kMaxMemory;
  state.progress.progress_monitor = OnProgress;
  state.info.progress = &state.progress;
  state.input.init_source = [](j_decompress_ptr) {};
  state.input.fill_input_buffer = Fill;
  state.input.skip_input_data = Skip;
  state.input.resync_to_restart = jpeg_resync_to_restart;
  state.input.term_source = [](j_decompress_ptr) {};
  state.info.src = &state.input;
  return true;
}

bool CallReadHeader(State& state) {
  if (setjmp(state.jump) != 0) return false;
  jpeg_read_header(&state.info, TRUE);
  return true;
}

bool CallStart(State& state) {
  if (setjmp(state.jump) != 0) return false;
  return jpeg_start_decompress(&state.info) != FALSE;
}

bool CallReadRows(State& state, JSAMPARRAY rows, JDIMENSION count) {
  if (setjmp(state.jump) != 0) return false;
  return jpeg_read_scanlines(&state.info, rows, count) > 0;
}

}  // namespace

JpegReader::JpegReader(const metadata::ByteSource& source, std::uint64_t offset)
    : state_(std::make_unique<State>(source, offset)) {}

JpegReader::~JpegReader() { jpeg_destroy_decompress(&state_->info); }

bool JpegReader::ReadHeader(JpegHeader& header) {
  if (!Create(*state_) || !CallReadHeader(*state_)) return false;
  auto& info = state_->info;
  header.width = static_cast<int>(info.image_width);
  header.height = static_cast<int>(info.image_height);
  header.cmyk = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
  header.invertedInks = info.saw_Adobe_marker != FALSE;
  header.multipleScans = jpeg_has_multiple_scans(&info) != FALSE;
  return true;
}

bool JpegReader::Start(int eighths, JpegOutput output) {
  auto& info = state_->info;
  info.scale_num = static_cast<unsigned>(eighths);
  info.scale_denom = 8;
  info.out_color_space = output == JpegOutput::Cmyk ? JCS_CMYK : output == JpegOutput::Rgb ? JCS_EXT_RGB : JCS_EXT_BGR;
  return CallStart(*state_);
}

int JpegReader::OutputWidth() const { return static_cast<int>(state_->info.output_width); }
int JpegReader::OutputHeight() const { return static_cast<int>(state_->info.output_height); }
int JpegReader::RowsDone() const { return static_cast<int>(state_->info.output_scanline); }

bool JpegReader::ReadRows(std::uint8_t** rows, int count) {
  return CallReadRows(*state_, rows, static_cast<JDIMENSION>(count));
}

const char* JpegReader::Reason() const {
  state_->held.Rethrow();
  return state_->reason.data();
}

bool JpegReader::Damaged() const { return state_->atEnd || state_->dataWarnings > 0; }

}  // namespace ml::imaging
