#pragma once

#include <cstdint>
#include <optional>

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

struct Jp2Options {
  std::optional<std::uint64_t>
      codeStream;  ///< decode the bare code stream that stands there; absent: look at the start
  int threads = 2;
};

/// Decodes a JPEG 2000 file or code stream, as small as still covers what is wanted. Grey, RGB, YCC (components may
/// be subsampled) and CMYK without a profile, up to 31 bits (the high eight count); transparency is shown over
/// white. A file that was cut off is shown as far as it goes. Throws LibraryError with the reason if there is no
/// picture, it is over kMaxPixelsScaled, or what would be decoded of it over kMaxJp2Samples.
DecodedPicture DecodeJp2(const metadata::ByteSource& source, const WantedSize& wanted, const Jp2Options& options = {});

}  // namespace ml::imaging
