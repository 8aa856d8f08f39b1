#pragma once

#include <string>

#include "imagefiles/image_file.h"
#include "metadata/byte_source.h"

namespace ml::imagefiles {

/// A JPEG file, also the ".thm" companion of another.
class JpegImageFile final : public ImageFile {
 public:
  JpegImageFile(const FormatRow& row, std::string path, const ImageFileOptions& options)
      : ImageFile(row, std::move(path), options) {}

 private:
  DecodedPicture Decode(const SizeWanted& wanted) override;
};

/// The turn that the options and the orientation recorded in a JPEG ask for.
imaging::Turn JpegTurn(const metadata::ByteSource& source, const ImageFileOptions& options);

inline bool SwapsSides(imaging::Turn turn) { return turn == imaging::Turn::cw90 || turn == imaging::Turn::cw270; }

}  // namespace ml::imagefiles
