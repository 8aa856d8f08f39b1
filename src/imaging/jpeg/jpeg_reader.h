#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "metadata/byte_source.h"

namespace ml::imaging {

enum class JpegOutput { Rgb, Bgr, Cmyk };

struct JpegHeader {
  int width = 0;
  int height = 0;
  bool cmyk = false;
  bool invertedInks = false;   ///< CMYK samples count light instead of ink
  bool multipleScans = false;  ///< the library holds the whole picture in memory before a row comes out
};

/// The library's decompressor behind functions that return instead of jumping: each gives false when the
/// library gave up, and Reason() then tells why. To be called in the order of declaration.
class JpegReader {
 public:
  /// Does not own the source.
  JpegReader(const metadata::ByteSource& source, std::uint64_t offset);
  ~JpegReader();
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;

  bool ReadHeader(JpegHeader& header);
  /// `eighths`: the scale, 1..8.
  bool Start(int eighths, JpegOutput output);
  int OutputWidth() const;
  int OutputHeight() const;
  /// The next rows, at most `count`, each with OutputWidth() pixels of three samples, four for Cmyk.
  bool ReadRows(std::uint8_t** rows, int count);
  int RowsDone() const;

  /// The library's words. Throws what the source threw when it was asked for bytes.
  const char* Reason() const;
  /// Whether bytes were missing or made no sense so far.
  bool Damaged() const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace ml::imaging
