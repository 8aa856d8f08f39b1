#pragma once

#include <cstdint>
#include <functional>

#include "imaging/decoded_picture.h"
#include "metadata/byte_source.h"

namespace ml::imaging {

/// Chooses the scale of decoding, in eighths 1..8, from the size in the header.
using JpegScale = std::function<int(int width, int height)>;

/// The least scale at which the picture still covers `targetWidth` x `targetHeight`.
int LeastCoveringEighths(int width, int height, int targetWidth, int targetHeight);
/// 8, halved down to 1 while both halved sides are whole numbers and one of them is at least as large as its
/// side of the box.
int HalvedEighths(int width, int height, int boxWidth, int boxHeight);

using DecodedJpeg = DecodedPicture;

/// Decodes the JPEG stream at `offset`, reading it piece by piece. Throws LibraryError with the reason if there
/// is no picture, or it is over the limits of pixel_buffer.h or of the work that a progressive one may ask for.
DecodedJpeg DecodeJpeg(const metadata::ByteSource& source, std::uint64_t offset, const JpegScale& scale,
                       PixelOrder order);

}  // namespace ml::imaging
