#pragma once

#include <cstddef>
#include <memory>

#include "metadata/byte_source.h"

namespace ml::imaging {

struct PngHeader {
  int width = 0;
  int height = 0;
  int passes = 1;  ///< how often the rows are gone through; more than once if the file is interlaced
};

/// The library's reader behind functions that return instead of jumping: each gives false when the library gave
/// up, and Reason() then tells why. To be called in the order of declaration.
class PngReader {
 public:
  /// Does not own the source.
  explicit PngReader(const metadata::ByteSource& source);
  ~PngReader();
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  bool ReadHeader(PngHeader& header);
  /// Rows come out as 8-bit red, green and blue over white.
  bool Start();
  std::size_t RowBytes() const;
  /// The next row. In every pass but the first it must hold what the pass before left in it.
  bool ReadRow(std::byte* row);

  /// The library's words. Throws what the source threw when it was asked for bytes.
  const char* Reason() const;

  struct State;

 private:
  std::unique_ptr<State> state_;
};

}  // namespace ml::imaging
