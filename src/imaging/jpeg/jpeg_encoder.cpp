#include "imaging/jpeg/jpeg_encoder.h"

#include <cstdio>
// These need the line above.
#include <jpeglib.h>

#include <array>
#include <cassert>
#include <csetjmp>
#include <cstdlib>

#include "imaging/decoded_picture.h"

namespace ml::imaging {
namespace {

/// What the library's jump must not skip the end of.
struct Encoder {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  std::jmp_buf jump{};
  std::array<char, JMSG_LENGTH_MAX> reason{};
  unsigned char* bytes = nullptr;
  unsigned long size = 0;

  Encoder() = default;
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;
  ~Encoder() {
    jpeg_destroy_compress(&info);
    std::free(bytes);  // the library's memory destination allocates so
  }
};

void OnError(j_common_ptr info) {
  auto& encoder = *static_cast<Encoder*>(info->client_data);
  info->err->format_message(info, encoder.reason.data());
  std::longjmp(encoder.jump, 1);
}

/// False if the library gave up. It leaves by a jump, so that nothing here may need a destructor.
bool Encode(Encoder& encoder, const PixelBuffer& picture, int quality) {
  auto& info = encoder.info;
  info.err = jpeg_std_error(&encoder.errors);
  encoder.errors.error_exit = OnError;
  info.client_data = &encoder;
  if (setjmp(encoder.jump) != 0) return false;
  jpeg_create_compress(&info);
  jpeg_mem_dest(&info, &encoder.bytes, &encoder.size);
  info.image_width = static_cast<JDIMENSION>(picture.width);
  info.image_height = static_cast<JDIMENSION>(picture.height);
  info.input_components = 3;
  info.in_color_space = picture.order == PixelOrder::Rgb ? JCS_EXT_RGB : JCS_EXT_BGR;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, quality, TRUE);
  info.write_JFIF_header = FALSE;
  info.optimize_coding = TRUE;
  jpeg_start_compress(&info, TRUE);
  for (int y = 0; y < picture.height; ++y) {
    // The library only reads.
    auto* row = reinterpret_cast<JSAMPROW>(const_cast<std::byte*>(picture.Row(y)));
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  return true;
}

}  // namespace

std::vector<std::byte> EncodeBareJpeg(const PixelBuffer& picture, int quality) {
  assert(picture.bytesPerSample == 1);
  Encoder encoder;
  if (!Encode(encoder, picture, quality)) Refuse(encoder.reason.data());
  const auto* first = reinterpret_cast<const std::byte*>(encoder.bytes);
  return {first, first + encoder.size};
}

}  // namespace ml::imaging
