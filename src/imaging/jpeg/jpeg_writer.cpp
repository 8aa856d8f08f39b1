#include "imaging/jpeg/jpeg_writer.h"

#include <cstdio>
// These need the line above.
#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <vector>

#include "imaging/held_exception.h"
#include "imaging/writers/messages.h"
#include "imaging/writers/metadata_segments.h"
#include "imaging/writers/output_file.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
constexpr int kRowsTogether = 16;

/// The library keeps pointers into it.
struct Encoder {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  jpeg_destination_mgr target{};
  std::jmp_buf jump{};
  std::array<char, JMSG_LENGTH_MAX> reason{};
  HeldException held;
  std::vector<JOCTET> buffer = std::vector<JOCTET>(kBufferSize);
  OutputFile& out;

  explicit Encoder(OutputFile& file) : out(file) {}
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;
  ~Encoder() { jpeg_destroy_compress(&info); }

  bool Put(std::size_t count) noexcept {
    return held.Does([&] { out.Write(std::as_bytes(std::span(buffer).first(count))); });
  }
};

Encoder& EncoderOf(j_compress_ptr info) { return *static_cast<Encoder*>(info->client_data); }

[[noreturn]] void OnError(j_common_ptr info) {
  auto& encoder = *static_cast<Encoder*>(info->client_data);
  info->err->format_message(info, encoder.reason.data());
  std::longjmp(encoder.jump, 1);
}

void Restart(j_compress_ptr info) {
  auto& encoder = EncoderOf(info);
  encoder.target.next_output_byte = encoder.buffer.data();
  encoder.target.free_in_buffer = encoder.buffer.size();
}

boolean OnFull(j_compress_ptr info) {
  auto& encoder = EncoderOf(info);
  if (!encoder.Put(encoder.buffer.size())) std::longjmp(encoder.jump, 1);
  Restart(info);
  return TRUE;
}

void OnEnd(j_compress_ptr info) {
  auto& encoder = EncoderOf(info);
  if (!encoder.Put(encoder.buffer.size() - encoder.target.free_in_buffer)) std::longjmp(encoder.jump, 1);
  Restart(info);
}

void SetUp(Encoder& encoder, const PixelRows& pixels, const WriteOptions& options) {
  auto& info = encoder.info;
  info.image_width = static_cast<JDIMENSION>(pixels.width);
  info.image_height = static_cast<JDIMENSION>(pixels.height);
  info.input_components = pixels.channels;
  info.in_color_space = pixels.channels == 1              ? JCS_GRAYSCALE
                        : pixels.order == PixelOrder::Rgb ? JCS_EXT_RGB
                                                          : JCS_EXT_BGR;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, options.quality, TRUE);
  if (options.resolution <= 0) return;
  constexpr UINT8 kInches = 1;
  info.density_unit = kInches;
  info.X_density = info.Y_density = static_cast<UINT16>(std::min(options.resolution, 0xffff));
}

/// False if the library or the file gave up. Left by a jump then: nothing here may need a destructor.
bool Encode(Encoder& encoder, const PixelRows& pixels, const std::vector<std::byte>& segments,
            const WriteOptions& options) {
  auto& info = encoder.info;
  info.err = jpeg_std_error(&encoder.errors);
  encoder.errors.error_exit = OnError;
  info.client_data = &encoder;
  if (setjmp(encoder.jump) != 0) return false;
  jpeg_create_compress(&info);
  encoder.target = {nullptr, 0, Restart, OnFull, OnEnd};
  info.dest = &encoder.target;
  SetUp(encoder, pixels, options);
  jpeg_start_compress(&info, TRUE);
  OnEnd(&info);  // the JFIF segment goes in front of ours
  if (!encoder.held.Does([&] { encoder.out.Write(segments); })) return false;
  std::array<JSAMPROW, kRowsTogether> rows{};
  for (int y = 0; y < pixels.height; y += kRowsTogether) {
    const int count = std::min(kRowsTogether, pixels.height - y);
    for (int i = 0; i < count; ++i) {
      // The library only reads.
      rows[static_cast<std::size_t>(i)] = reinterpret_cast<JSAMPROW>(const_cast<std::byte*>(pixels.Row(y + i)));
    }
    jpeg_write_scanlines(&info, rows.data(), static_cast<JDIMENSION>(count));
    if (!encoder.held.Does([&] { encoder.out.Done(y + count, pixels.height); })) return false;
  }
  jpeg_finish_compress(&info);
  return true;
}

}  // namespace

void WriteJPEG(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
               const WriteOptions& options) {
  if (pixels.bytesPerSample != 1) {
    throw platform::UserError(RefusalOf(messages::kWriteJpeg, path, messages::kJpegDepth));
  }
  if (pixels.width > JPEG_MAX_DIMENSION || pixels.height > JPEG_MAX_DIMENSION) {
    throw platform::UserError(RefusalOf(messages::kWriteJpeg, path, messages::kTooLong));
  }
  const auto segments =
      Prepared(messages::kWriteJpeg, path, [&] { return MetadataSegments(pixels, blocks, options.resolution); });
  OutputFile out(path, {messages::kWriteJpeg}, options);
  Encoder encoder(out);
  if (!Encode(encoder, pixels, segments, options)) {
    encoder.held.Rethrow();
    throw platform::UserError(RefusalOf(messages::kWriteJpeg, path, encoder.reason.data()));
  }
  out.Commit();
}

}  // namespace ml::imaging
