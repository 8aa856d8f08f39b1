#include "imaging/png/png_writer.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <bit>
#include <csetjmp>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

#include "imaging/colour/colour_profile.h"
#include "imaging/held_exception.h"
#include "imaging/png/png_encoder.h"
#include "imaging/png/png_texts.h"
#include "imaging/writers/messages.h"
#include "imaging/writers/metadata_segments.h"
#include "imaging/writers/output_file.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

constexpr std::size_t kMaxName = 79;

/// What goes into the file, made ready.
struct Contents {
  std::vector<std::byte> texts, exif, profile;
  std::string profileName;
  bool grey = false;
};

/// The library keeps a pointer to it.
struct Encoder {
  OutputFile& out;
  std::array<char, 200> reason{};
  HeldException held{};
  std::jmp_buf jump{};
  std::vector<png_byte> row{};  ///< of one channel
};

void OnWrite(png_structp png, png_bytep data, png_size_t length) {
  auto& encoder = *static_cast<Encoder*>(png_get_io_ptr(png));
  if (!encoder.held.Does([&] { encoder.out.Write(std::as_bytes(std::span(data, length))); })) {
    std::longjmp(encoder.jump, 1);
  }
}

void OnError(png_structp png, png_const_charp text) {
  auto& encoder = *static_cast<Encoder*>(png_get_error_ptr(png));
  std::strncpy(encoder.reason.data(), text, encoder.reason.size() - 1);
  std::longjmp(encoder.jump, 1);
}

void OnWarning(png_structp, png_const_charp) {}

bool IsGreyRow(const std::byte* row, int width, std::size_t sample) {
  for (int x = 0; x < width; ++x, row += 3 * sample) {
    if (std::memcmp(row, row + sample, 2 * sample) != 0) return false;
  }
  return true;
}

/// Whether all pixels have equal channels.
bool IsGrey(const PixelRows& pixels) {
  if (pixels.channels == 1) return true;
  for (int y = 0; y < pixels.height; ++y) {
    if (!IsGreyRow(pixels.Row(y), pixels.width, static_cast<std::size_t>(pixels.bytesPerSample))) return false;
  }
  return true;
}

/// A name as the format allows: visible ASCII, single blanks inside.
std::string NameOf(const ColourProfile& profile) {
  std::string name;
  for (const char c : profile.Description()) {
    const bool isVisible = c > ' ' && c <= '~';
    if (isVisible || (c == ' ' && !name.empty() && name.back() != ' ')) name += c;
  }
  name = name.substr(0, kMaxName);
  while (name.ends_with(' ')) name.pop_back();
  return name.empty() ? "ICC profile" : name;
}

Contents Prepare(const PixelRows& pixels, const MetadataBlocks& blocks) {
  Contents contents{.texts = PngTexts(blocks), .exif = {}, .profile = {}, .profileName = {}, .grey = IsGrey(pixels)};
  contents.exif = ExifForBox(pixels, blocks, 0).value_or(std::vector<std::byte>());
  const auto profile = ColourProfile::FromMemory(blocks.icc);
  // The format has no profile of colours on a grey picture.
  if (profile && profile.IsRgb() != contents.grey) {
    contents.profile = blocks.icc;
    contents.profileName = NameOf(profile);
  }
  return contents;
}

void SetUp(png_structp png, png_infop info, const PixelRows& pixels, const Contents& contents) {
  png_set_benign_errors(png, 1);
  png_set_IHDR(png, info, static_cast<png_uint_32>(pixels.width), static_cast<png_uint_32>(pixels.height),
               pixels.bytesPerSample * 8, contents.grey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, kPngCompressionLevel);
  if (!contents.profile.empty()) {
    png_set_iCCP(png, info, contents.profileName.c_str(), PNG_COMPRESSION_TYPE_BASE,
                 reinterpret_cast<png_const_bytep>(contents.profile.data()),
                 static_cast<png_uint_32>(contents.profile.size()));
  }
  if (!contents.exif.empty()) {
    // The library only copies.
    auto* exif = reinterpret_cast<png_bytep>(const_cast<std::byte*>(contents.exif.data()));
    png_set_eXIf_1(png, info, static_cast<png_uint_32>(contents.exif.size()), exif);
  }
}

/// The row as the library takes it: its own, or the first channel of it.
png_const_bytep LibraryRow(const PixelRows& pixels, int y, bool grey, png_byte* scratch) {
  const auto* row = reinterpret_cast<png_const_bytep>(pixels.Row(y));
  if (!grey || pixels.channels == 1) return row;
  const auto sample = static_cast<std::size_t>(pixels.bytesPerSample);
  for (std::size_t x = 0; x < static_cast<std::size_t>(pixels.width); ++x) {
    std::memcpy(scratch + x * sample, row + x * 3 * sample, sample);
  }
  return scratch;
}

/// False if the library or the file gave up. Left by a jump then: nothing here may need a destructor.
bool Encode(Encoder& encoder, png_structp png, png_infop info, const PixelRows& pixels, const Contents& contents) {
  if (setjmp(encoder.jump) != 0) return false;
  png_set_write_fn(png, &encoder, OnWrite, nullptr);
  SetUp(png, info, pixels, contents);
  png_write_info(png, info);
  if (!encoder.held.Does([&] { encoder.out.Write(contents.texts); })) return false;
  if (pixels.bytesPerSample == 2 && std::endian::native == std::endian::little) png_set_swap(png);
  if (!contents.grey && pixels.order == PixelOrder::Bgr) png_set_bgr(png);
  for (int y = 0; y < pixels.height; ++y) {
    png_write_row(png, LibraryRow(pixels, y, contents.grey, encoder.row.data()));
    if (!encoder.held.Does([&] { encoder.out.Done(y + 1, pixels.height); })) return false;
  }
  png_write_end(png, nullptr);
  return true;
}

}  // namespace

void WritePNG(const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
              const WriteOptions& options) {
  const auto contents = Prepared(messages::kWritePng, path, [&] { return Prepare(pixels, blocks); });
  OutputFile out(path, {messages::kWritePng}, options);
  Encoder encoder{out};
  encoder.row.resize(static_cast<std::size_t>(pixels.width) * 2);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &encoder, OnError, OnWarning);
  png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
  const bool done = info != nullptr && Encode(encoder, png, info, pixels, contents);
  png_destroy_write_struct(&png, &info);
  if (!done) {
    encoder.held.Rethrow();
    throw platform::UserError(RefusalOf(messages::kWritePng, path, encoder.reason.data()));
  }
  out.Commit();
}

}  // namespace ml::imaging
