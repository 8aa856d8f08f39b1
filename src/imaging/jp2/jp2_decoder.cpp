#include "imaging/jp2/jp2_decoder.h"

#include <algorithm>

#include "imaging/jp2/code_stream.h"
#include "imaging/jp2/jp2_colours.h"
#include "imaging/jp2/jp2_reader.h"
#include "metadata/jp2_boxes.h"

namespace ml::imaging {
namespace {

int Halved(int side, int halvings) { return static_cast<int>((side + (1LL << halvings) - 1) >> halvings); }

/// The most halvings that still cover what is wanted.
int ChooseHalvings(PictureSize full, PictureSize wanted, int most) {
  int halvings = 0;
  while (halvings < most && Halved(full.width, halvings + 1) >= wanted.width &&
         Halved(full.height, halvings + 1) >= wanted.height) {
    ++halvings;
  }
  return halvings;
}

}  // namespace

DecodedPicture DecodeJp2(const metadata::ByteSource& source, const WantedSize& wanted, const Jp2Options& options) {
  const auto file = metadata::ReadJp2File(source);
  if (!file && !options.codeStream) Refuse("Not a JPEG 2000 file");
  const auto codeStream =
      options.codeStream ? metadata::FileRange{*options.codeStream, source.Size()} : file->codeStream;
  if (codeStream.size == 0) Refuse("The file has no code stream");
  // A file that is a bare code stream has no boxes before it.
  const bool bare = options.codeStream || codeStream.position == 0;
  const auto gap = FindGap(source, codeStream);
  const MendedSource mended(source, gap.value_or(CodeStreamGap{}));

  Jp2Reader reader(gap ? mended : source, bare ? codeStream.position : 0,
                   bare ? Jp2Reader::Content::CodeStream : Jp2Reader::Content::BoxedFile, options.threads);
  const auto full = reader.FullSize();
  reader.Decode(wanted ? ChooseHalvings(full, wanted(full.width, full.height), reader.MaxHalvings()) : 0);
  return {CombineComponents(reader.Components(), reader.Colours()), full.width, full.height,
          gap.has_value() || reader.Damaged()};
}

}  // namespace ml::imaging
