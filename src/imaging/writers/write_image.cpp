#include "imaging/writers/write_image.h"

#include "imaging/jp2/jp2_writer.h"
#include "imaging/jpeg/jpeg_writer.h"
#include "imaging/messages.h"
#include "imaging/png/png_writer.h"
#include "imaging/tiff/tiff_writer.h"
#include "imaging/writers/messages.h"
#include "imaging/writers/output_file.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using Writer = void (*)(const PixelRows&, const MetadataBlocks&, const std::string&, const WriteOptions&);

struct WriterRow {
  WrittenFormat format;
  const char* refusal;
  Writer write;
};
constexpr WriterRow kWriters[] = {{WrittenFormat::Jpeg, messages::kWriteJpeg, WriteJPEG},
                                  {WrittenFormat::Jpeg2000, messages::kWriteJp2, WriteJPEG2000},
                                  {WrittenFormat::Png, messages::kWritePng, WritePNG},
                                  {WrittenFormat::Tiff, messages::kWriteTiff, WriteTIFF}};

}  // namespace

void WriteImage(WrittenFormat format, const PixelRows& pixels, const MetadataBlocks& blocks, const std::string& path,
                const WriteOptions& options) {
  for (const auto& row : kWriters) {
    if (row.format != format) continue;
    if (pixels.width <= 0 || pixels.height <= 0 || pixels.data == nullptr) {
      throw platform::UserError(RefusalOf(row.refusal, path, messages::kNoPixels));
    }
    return row.write(pixels, blocks, path, options);
  }
}

}  // namespace ml::imaging
