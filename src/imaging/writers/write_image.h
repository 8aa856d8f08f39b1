#pragma once

#include <stop_token>
#include <string>

#include "imaging/writers/metadata_blocks.h"
#include "imaging/writers/pixel_rows.h"
#include "platform/atomic_file.h"
#include "platform/interaction.h"
#include "platform/progress.h"

/// Pictures as new files, with the metadata of their source. Each format has a writer in the folder of its library
/// (jpeg, png, jp2, tiff); this is the way to all of them.
namespace ml::imaging {

enum class WrittenFormat { Jpeg, Jpeg2000, Png, Tiff };

struct WriteOptions {
  int quality = 90;                        ///< JPEG: 0..100; JPEG 2000: percent of the uncompressed size, see RateOf
  int resolution = 0;                      ///< JPEG, TIFF: dots an inch; 0 is none for a JPEG
  int threads = 1;                         ///< that may encode at once, for JPEG 2000
  platform::Progress* progress = nullptr;  ///< told 0..100 of this file; may be null
  platform::Interaction* ask = nullptr;    ///< is shown where a TIFF broke off; may be null
  platform::AtomicFileOptions file{};
  std::stop_token stop{};
};

/// Makes the file at `path`, or replaces it. Samples are written as they come: JPEG takes single bytes, the others one
/// or two. Throws UserError, whose sentence names the file, and Cancelled once `stop` is requested; either way there is
/// no new file, and one that stood there is as it was.
void WriteImage(WrittenFormat format, const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
                const WriteOptions& options);

}  // namespace ml::imaging
