#pragma once

#include <cstdint>
#include <memory>

#include "imaging/tiff/tiff_samples.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

struct TiffPicture {
  TiffSamples samples;
  std::uint16_t photometric = 0;  ///< what the samples mean, as the tag says it; may differ from that of the file
};

/// Decodes pictures of a TIFF file without changing their samples. Only colours that are stored with fewer samples than
/// pixels, as in JPEG streams, come as red, green and blue. The library is loaded by the first one. Does not own the
/// source.
class TiffReader {
 public:
  /// Throws LibraryError with the library's reason and description.
  explicit TiffReader(const metadata::ByteSource& source);
  ~TiffReader();

  /// The picture of the directory at `offset`. Throws LibraryError: also if a part of it is missing, if it has
  /// more pixels than kMaxPixelsWhole, and for the rare ways to store pixels that are not known here.
  TiffPicture Read(std::uint32_t offset);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace ml::imaging
