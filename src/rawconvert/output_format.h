#pragma once

#include <string_view>

#include "imaging/writers/write_image.h"

namespace ml::rawconvert {

/// What a conversion makes. The numbers are those of the settings.
enum class OutputFormat { Jpeg = 0, Jp2Bits8 = 1, Jp2Bits16 = 2, Png8 = 3, Png16 = 4, Tiff8 = 5, Tiff16 = 6 };

struct OutputFormatFacts {
  imaging::WrittenFormat written;
  bool bits16;
  std::string_view extension;   ///< ".jpg"
  std::string_view word;        ///< on command lines
  std::string_view fileFilter;  ///< of a file dialog
};

/// A number that is no format stands for 16-bit TIFF.
const OutputFormatFacts& FactsOf(OutputFormat format);

}  // namespace ml::rawconvert
