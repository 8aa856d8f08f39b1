#include "support/truncation_sweep.h"

#include "imaging/dib/dib_decoder.h"
#include "imaging/jp2/jp2_decoder.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/magick/magick_decoder.h"
#include "imaging/png/png_decoder.h"
#include "imaging/psd/psd_decoder.h"
#include "imaging/raw/raw_preview.h"
#include "metadata/riff.h"
#include "platform/errors.h"
#include "support/small_files.h"

namespace ml::imaging {
namespace {

using metadata::ByteSource, metadata::MemorySource;
using platform::LibraryError, platform::UserError;

/// The first frame, as the handler of movies takes it.
int DecodeFirstFrame(const ByteSource& source) {
  const auto movie = metadata::ReadAviFile(source);
  if (!movie || movie->firstFrame.size == 0) return 0;
  if (movie->IsMotionJpeg()) {
    return DecodeJpeg(
               source, movie->firstFrame.position, [](int, int) { return 8; }, PixelOrder::Rgb)
        .pixels.width;
  }
  const auto read = [&](const metadata::FileRange& range) {
    return source.ReadUpTo(range.position, static_cast<std::size_t>(range.size));
  };
  const auto format = read(movie->format), frame = read(movie->firstFrame);
  const auto view = [](const auto& bytes) { return metadata::ByteView(bytes, metadata::ByteOrder::Little); };
  return DecodeDib(view(format), view(frame)).pixels.width;
}

struct Decoder {
  const char* name;
  const char* extension;
  int (*width)(const ByteSource&);  ///< of the picture decoded; 0: none
};
const Decoder kDecoders[] = {
    {"Jpeg", ".jpg",
     [](const auto& source) {
       return DecodeJpeg(
                  source, 0, [](int, int) { return 8; }, PixelOrder::Rgb)
           .pixels.width;
     }},
    {"Png", ".png", [](const auto& source) { return DecodePng(source).pixels.width; }},
    {"Psd", ".psd", [](const auto& source) { return DecodePsd(source).pixels.width; }},
    {"Jp2", ".jp2",
     [](const auto& source) { return DecodeJp2(source, {}, {.codeStream = {}, .threads = 1}).pixels.width; }},
    {"Tiff", ".tif", [](const auto& source) { return DecodeMagick(source, MagickFormat::Tiff).pixels.width; }},
    {"Gif", ".gif", [](const auto& source) { return DecodeMagick(source, MagickFormat::Gif).pixels.width; }},
    {"Bmp", ".bmp", [](const auto& source) { return DecodeMagick(source, MagickFormat::Bmp).pixels.width; }},
    {"Avi", ".avi", DecodeFirstFrame},
    {"Mrw", ".mrw", [](const auto& source) { return DecodeRawPreview(source).pixels.width; }},
    {"Pef", ".pef", [](const auto& source) { return DecodeRawPreview(source).pixels.width; }},
};

class TruncatedPicture : public testing::TestWithParam<std::pair<Decoder, test::SmallFile>> {};

TEST_P(TruncatedPicture, EndsCleanlyAtEveryLength) {
  const auto& [decoder, file] = GetParam();
  EXPECT_GT(decoder.width(MemorySource(std::as_bytes(std::span(file.content)))), 0);
  test::SweepPrefixes<LibraryError, UserError>(file.content, [&](auto prefix) { decoder.width(MemorySource(prefix)); });
}

/// Every decoder with every file of its kind; the byte order of the metadata is no matter of theirs.
std::vector<std::pair<Decoder, test::SmallFile>> Cases() {
  std::vector<std::pair<Decoder, test::SmallFile>> cases;
  for (const auto& decoder : kDecoders) {
    for (const auto& file : test::SmallFiles()) {
      if (file.file.ends_with(decoder.extension) && !file.name.ends_with("BigEndian"))
        cases.emplace_back(decoder, file);
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Kinds, TruncatedPicture, testing::ValuesIn(Cases()),
                         [](const auto& c) { return std::string(c.param.first.name) + c.param.second.name; });

}  // namespace
}  // namespace ml::imaging
