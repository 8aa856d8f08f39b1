#include "imaging/png/png_encoder.h"

#include <png.h>

#include <cassert>
#include <csetjmp>
#include <cstring>
#include <string>

#include "imaging/held_exception.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

struct Output {
  std::vector<std::byte> bytes;
  std::string reason;
  HeldException held;
};

void Write(png_structp png, png_bytep data, png_size_t length) {
  auto& output = *static_cast<Output*>(png_get_io_ptr(png));
  const auto* begin = reinterpret_cast<const std::byte*>(data);
  if (!output.held.Does([&] { output.bytes.insert(output.bytes.end(), begin, begin + length); })) png_longjmp(png, 1);
}

void OnError(png_structp png, png_const_charp text) {
  auto& output = *static_cast<Output*>(png_get_error_ptr(png));
  output.held.Does([&] { output.reason = text; });
  png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

/// Left by a jump on failure: nothing here may need a destructor.
bool WriteRows(png_structp png, png_infop info, const PixelBuffer& picture, PngColour colour, png_bytep greyRow) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height), 8,
               colour == PngColour::Grey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, kPngCompressionLevel);
  png_write_info(png, info);
  if (colour == PngColour::Rgb && picture.order == PixelOrder::Bgr) png_set_bgr(png);
  for (int y = 0; y < picture.height; ++y) {
    const auto* row = reinterpret_cast<png_const_bytep>(picture.Row(y));
    if (colour == PngColour::Grey) {
      for (std::ptrdiff_t x = 0; x < picture.width; ++x) greyRow[x] = row[x * 3];
      row = greyRow;
    }
    png_write_row(png, row);
  }
  png_write_end(png, info);
  return true;
}

}  // namespace

std::vector<std::byte> EncodePng(const PixelBuffer& picture, PngColour colour) {
  assert(picture.bytesPerSample == 1 && picture.width > 0 && picture.height > 0);
  Output output;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &output, OnError, OnWarning);
  png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
  bool done = false;
  if (info != nullptr) {
    png_set_write_fn(png, &output, Write, nullptr);
    std::vector<png_byte> greyRow(static_cast<std::size_t>(picture.width));
    done = WriteRows(png, info, picture, colour, greyRow.data());
  }
  png_destroy_write_struct(&png, &info);
  if (!done) {
    output.held.Rethrow();
    throw platform::LibraryError(output.reason.empty() ? "Unable to write PNG" : output.reason, "");
  }
  return std::move(output.bytes);
}

}  // namespace ml::imaging
