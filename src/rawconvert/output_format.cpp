#include "rawconvert/output_format.h"

#include <array>
#include <cstddef>

namespace ml::rawconvert {
namespace {

using imaging::WrittenFormat;

constexpr std::string_view kJpegFilter = "JPEG images (*.jpg)|*.jpg||";
constexpr std::string_view kJp2Filter = "JPEG 2000 images (*.jp2)|*.jp2||";
constexpr std::string_view kPngFilter = "PNG images (*.png)|*.png||";
constexpr std::string_view kTiffFilter = "TIFF images (*.tif)|*.tif||";

constexpr std::array kFormats = {
    OutputFormatFacts{WrittenFormat::Jpeg, false, ".jpg", "jpeg", kJpegFilter},
    OutputFormatFacts{WrittenFormat::Jpeg2000, false, ".jp2", "jp2-8", kJp2Filter},
    OutputFormatFacts{WrittenFormat::Jpeg2000, true, ".jp2", "jp2-16", kJp2Filter},
    OutputFormatFacts{WrittenFormat::Png, false, ".png", "png-8", kPngFilter},
    OutputFormatFacts{WrittenFormat::Png, true, ".png", "png-16", kPngFilter},
    OutputFormatFacts{WrittenFormat::Tiff, false, ".tif", "tiff-8", kTiffFilter},
    OutputFormatFacts{WrittenFormat::Tiff, true, ".tif", "tiff-16", kTiffFilter},
};

}  // namespace

const OutputFormatFacts& FactsOf(OutputFormat format) {
  const auto index = static_cast<std::size_t>(format);
  return index < kFormats.size() ? kFormats[index] : kFormats.back();
}

}  // namespace ml::rawconvert
