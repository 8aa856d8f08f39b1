#include "imaging/png/png_decoder.h"

#include "imaging/messages.h"
#include "imaging/png/png_reader.h"

namespace ml::imaging {

DecodedPicture DecodePng(const metadata::ByteSource& source) {
  PngReader reader(source);
  PngHeader header;
  if (!reader.ReadHeader(header)) Refuse(reader.Reason());
  CheckPixelCount(header.width, header.height, kMaxPixelsWhole);
  if (!reader.Start()) Refuse(reader.Reason());

  DecodedPicture result{MakeUndecoded(header.width, header.height), header.width, header.height};
  if (reader.RowBytes() != result.pixels.RowBytes()) Refuse(messages::kUnknownLayout);
  for (int pass = 0; pass < header.passes && !result.damaged; ++pass) {
    for (int y = 0; y < header.height && !result.damaged; ++y) {
      if (reader.ReadRow(result.pixels.Row(y))) continue;
      const auto* reason = reader.Reason();
      if (pass == 0 && y == 0) Refuse(reason);
      result.damaged = true;
    }
  }
  return result;
}

}  // namespace ml::imaging
